#include <memory>

#include "importers/sceneapi/dev/qorsceneapi_oo.h"
#include "model/deformable_triangle_animation.h"
#include "plugins/3dsmax/export/deformable_capture.h"
#include "plugins/3dsmax/export/mesh_part.h"
#include "plugins/3dsmax/export/scene_exporter.h"

bool SceneExporter::ExportDeformable(INode* node) {
    if (!NodeIsWanted(node)) {
        return false;
    }
    const auto animations =
        CaptureDeformable(node, timing_, host_, *options_, *mesh_parts_, notes_);
    for (const std::shared_ptr<qor::DeformableTriangleAnimation>& animation : animations) {
        scene_->emit(*animation);
    }
    return !animations.empty();
}
