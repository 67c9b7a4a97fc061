#pragma once

#include "standins/host/sdk/Materials/MtlBase.h"
#include "standins/host/sdk/matrix3.h"

class Bitmap;

/// A map: a colour for each point of a surface.
class Texmap : public MtlBase {
public:
    SClass_ID SuperClassID() override { return TEXMAP_CLASS_ID; }

    /// The mapping channel that the map takes its coordinates from.
    virtual int GetMapChannel() { return 1; }

    /// Transforms a mesh's coordinates to those of the map. The identity for a map without a
    /// transform.
    virtual void GetUVTransform(Matrix3& map_from_mesh) { map_from_mesh.IdentityMatrix(); }

    /// Loads the files that drawing the map at `t` needs. 0 if one is missing.
    virtual int LoadMapFiles(TimeValue) { return TRUE; }

    /// Fills the bitmap with the part of the map whose coordinates are from 0 to 1.
    virtual void RenderBitmap(TimeValue t, Bitmap* bitmap, float scale3d = 1.0f,
                              BOOL filter = FALSE) = 0;
};
