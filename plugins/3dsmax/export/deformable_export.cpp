#include <memory>
#include <string>

#include "importers/sceneapi/dev/qorsceneapi_oo.h"
#include "model/deformable_triangle_animation.h"
#include "plugins/3dsmax/export/deformable_capture.h"
#include "plugins/3dsmax/export/mesh_part.h"
#include "plugins/3dsmax/export/narrow_name.h"
#include "plugins/3dsmax/export/scene_exporter.h"

bool SceneExporter::ExportDeformable(INode* node) {
    if (!NodeIsWanted(node)) {
        return false;
    }
    const DeformableCapture capture =
        CaptureDeformable(node, timing_, host_, *options_, *mesh_parts_);
    for (const std::shared_ptr<qor::DeformableTriangleAnimation>& animation : capture.animations) {
        scene_->emit(*animation);
    }

    const std::string name = "Mesh " + NarrowName(node->GetName());
    if (capture.has_broken_frames) {
        scene_->print_error(name +
                            " lacks frames: they have faces with vertices that it hasn't got");
    }
    if (capture.has_broken_coordinates) {
        scene_->print_error(name + " goes without texture coordinates: some of them point nowhere");
    }
    return !capture.animations.empty();
}
