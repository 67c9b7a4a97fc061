#include <algorithm>
#include <cmath>
#include <iterator>

#include "importers/sceneapi/dev/qorsceneapi_oo.h"
#include "model/fbx_animation.h"
#include "plugins/3dsmax/export/narrow_name.h"
#include "plugins/3dsmax/export/scene_exporter.h"
#include "plugins/3dsmax/export/scene_matrix.h"

namespace {

// The single-precision number nearest to 1e-5. NaN is no difference.
constexpr double kIdentityTolerance = 9.999999747378752e-6;

bool IsIdentity(const qorMatrix& matrix) {
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            const double identity = row == column ? 1.0 : 0.0;
            if (std::fabs(matrix.m[row][column] - identity) > kIdentityTolerance) {
                return false;
            }
        }
    }
    return true;
}

// As numbers: zeros of either sign are the same, and NaN differs from itself.
bool SameNumbers(const qorMatrix& a, const qorMatrix& b) {
    for (int row = 0; row < 4; ++row) {
        if (!std::equal(std::begin(a.m[row]), std::end(a.m[row]), std::begin(b.m[row]))) {
            return false;
        }
    }
    return true;
}

}  // namespace

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

// Each key is the change from `base`, the matrix that was written. A node that holds its place
// over several frames has a key for the first of them alone, and one that never leaves its base
// has no track.
void SceneExporter::EmitTransformAnimation(INode* node, bool relative_to_parent,
                                           const Matrix3& base) {
    INode* parent = relative_to_parent ? node->GetParentNode() : nullptr;
    const Matrix3 inverse_base = Inverse(base);
    qor::FBXAnimation track(NarrowName(node->GetName()) + "3ds_animation", 0.0f,
                            timing_.TrackDuration(), true);
    bool moves = false;
    qorMatrix before = {};
    timing_.ForEachFrame([&](TimeValue t) {
        Matrix3 local = node->GetNodeTM(t);
        if (parent != nullptr) {
            local = local * Inverse(parent->GetNodeTM(t));
        }
        const qorMatrix change = ToSceneMatrix(local * inverse_base);
        const bool is_first = t == timing_.rangeStart;
        if (is_first || !SameNumbers(change, before)) {
            track.add_key(timing_.KeyTimestamp(t), change);
            moves = !is_first || !IsIdentity(change);
        }
        before = change;
    });
    if (moves) {
        scene_->emit(track);
    }
}
