#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>

#include "importers/sceneapi/dev/qorsceneapi_oo.h"
#include "plugins/3dsmax/export/matrix_inverse.h"
#include "plugins/3dsmax/export/motion_samples.h"
#include "plugins/3dsmax/export/motion_track.h"
#include "plugins/3dsmax/export/narrow_name.h"
#include "plugins/3dsmax/export/scene_exporter.h"
#include "plugins/3dsmax/export/scene_matrix.h"

namespace {

// The float nearest to 1e-5. NaN counts as within the tolerance.
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

// Compares numbers, not bits: 0 equals -0, and NaN differs from itself.
bool SameNumbers(const qorMatrix& a, const qorMatrix& b) {
    for (int row = 0; row < 4; ++row) {
        if (!std::equal(std::begin(a.m[row]), std::end(a.m[row]), std::begin(b.m[row]))) {
            return false;
        }
    }
    return true;
}

constexpr const char* kOfParent = "the matrix of its parent";

bool SameBits(const Matrix3& a, const Matrix3& b) {
    for (int row = 0; row < 4; ++row) {
        const Point3 of_a = a.GetRow(row);
        const Point3 of_b = b.GetRow(row);
        const float numbers_of_a[] = {of_a.x, of_a.y, of_a.z};
        const float numbers_of_b[] = {of_b.x, of_b.y, of_b.z};
        if (std::memcmp(numbers_of_a, numbers_of_b, sizeof numbers_of_a) != 0) {
            return false;
        }
    }
    return true;
}

}  // namespace

void SceneExporter::EmitNodeTransform(INode* node, bool relative_to_parent, bool has_content) {
    Interval valid = FOREVER;
    const Matrix3 world_from_node = node->GetNodeTM(timing_.time, &valid);
    INode* parent = relative_to_parent ? node->GetParentNode() : nullptr;
    const Matrix3 matrix =
        parent == nullptr ? world_from_node
                          : world_from_node * InverseOrIdentity(parent->GetNodeTM(timing_.time),
                                                                NotesOf(node), kOfParent);
    scene_->transform(ToSceneMatrix(matrix));

    if (notes_ != nullptr && !IsFinite(matrix)) {
        NotesOf(node).add(Note::kMatrixNotFinite);
    }

    if (!has_content || timing_.RangeIsWithin(valid)) {
        return;
    }
    if (options_->TransformAnimations) {
        EmitTransformAnimation(node, parent, matrix);
    } else if (!animation_) {
        NotesOf(node).add(Note::kTrackSwitchedOff, "the setting TransformAnimations is off");
    }
}

// Each key is the change from `base`, the matrix that was written. While a node rests, only the
// first frame has a key. A node that never leaves `base` has no track.
void SceneExporter::EmitTransformAnimation(INode* node, INode* parent, const Matrix3& base) {
    const Matrix3 inverse_base = InverseOrIdentity(base, NotesOf(node), "its own matrix");
    qor::FBXAnimation track = MakeMotionTrack(NarrowName(node->GetName()), timing_);
    motion_->prepare(node);
    const Matrix3* own = motion_->of(node);
    const Matrix3* above = parent == nullptr ? nullptr : motion_->of(parent);
    Matrix3 last_parent;
    Matrix3 parent_from_world;  // many parents rest, so it is computed only when it changes
    bool moves = false;
    qorMatrix before = {};
    for (const TimeValue t : timing_.Times()) {
        Matrix3 local = own != nullptr ? *own++ : node->GetNodeTM(t);
        if (parent != nullptr) {
            const Matrix3 world_from_parent = above != nullptr ? *above++ : parent->GetNodeTM(t);
            if (t == timing_.rangeStart || !SameBits(world_from_parent, last_parent)) {
                last_parent = world_from_parent;
                parent_from_world = InverseOrIdentity(world_from_parent, NotesOf(node), kOfParent);
            }
            local = local * parent_from_world;
        }
        const qorMatrix change = ToSceneMatrix(local * inverse_base);
        const bool is_first = t == timing_.rangeStart;
        if (is_first || !SameNumbers(change, before)) {
            track.add_key(timing_.KeyTimestamp(t), change);
            moves = !is_first || !IsIdentity(change);
        }
        before = change;
    }
    if (moves) {
        scene_->emit(track);
    }
}
