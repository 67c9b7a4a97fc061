#include "importers/sceneapi/dev/qorsceneapi_oo.h"
#include "plugins/3dsmax/export/scene_exporter.h"
#include "plugins/3dsmax/export/scene_matrix.h"

void SceneExporter::EmitNodeTransform(INode* node, bool relative_to_parent, bool has_content) {
    Interval valid = FOREVER;
    Matrix3 matrix = node->GetNodeTM(timing_.time, &valid);
    INode* parent = node->GetParentNode();
    if (relative_to_parent && parent != nullptr) {
        matrix = matrix * Inverse(parent->GetNodeTM(timing_.time));
    }
    scene_->transform(ToSceneMatrix(matrix));

    if (has_content && options_->TransformAnimations && !timing_.RangeIsWithin(valid)) {
        EmitTransformAnimation(node, relative_to_parent, matrix);
    }
}

// Motion isn't sampled yet.
void SceneExporter::EmitTransformAnimation(INode*, bool, const Matrix3&) {}
