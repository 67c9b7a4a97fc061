#pragma once

#include <memory>

#include "model/smart_material.h"
#include "plugins/3dsmax/export/export_notes.h"
#include "plugins/3dsmax/export/host.h"

/// One material of a mesh: the scene's material made from it, and the source of its texture
/// coordinates.
///
/// A channel is the number of one of the mesh's mapping channels, or -1. All textures of an entry
/// share one transform of the coordinates: that of the bitmap map that was applied last.
struct MaterialEntry {
    Matrix3 uv_transform;
    Mtl* host_material = nullptr;  // null for faces without a material
    int diffuse_channel = -1;
    int opacity_channel = -1;
    int bump_channel = -1;
    int specular_channel = -1;
    std::shared_ptr<qor::SmartMaterial> material;  // null until it is converted
    TimeValue time = 0;                            // when colours and bitmaps are read
    NodeNotes notes;

    bool has_diffuse_channel() const { return diffuse_channel >= 0; }
    bool has_opacity_channel() const { return opacity_channel >= 0; }
    bool has_bump_channel() const { return bump_channel >= 0; }

    // The renderer takes only one channel: that of the diffuse texture, else of the opacity
    // texture, else of the bump texture. Negative if there is none.
    int coordinate_channel() const {
        return has_diffuse_channel()   ? diffuse_channel
               : has_opacity_channel() ? opacity_channel
                                       : bump_channel;
    }
};
