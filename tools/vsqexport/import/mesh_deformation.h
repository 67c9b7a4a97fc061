#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "standins/host/sdk/max.h"
#include "tools/vsqexport/import/bone_weights.h"
#include "tools/vsqexport/import/model_pose.h"
#include "tools/vsqexport/import/morph_motion.h"

namespace vsqexport {

/// What moves the vertices and the specified normals of a mesh: first the targets that it is on the
/// way to, then the bones that it hangs on.
class MeshDeformation {
public:
    /// A change of one vertex or normal.
    struct Shift {
        std::uint32_t number;
        Point3 by;
    };
    /// The targets of a part of the mesh.
    struct Morph {
        std::shared_ptr<const MorphMotion> motion;  // can be null
        std::vector<float> rest_weights;            // of targets whose weight doesn't change
        std::vector<std::vector<Shift>> vertices;   // by target
        std::vector<std::vector<Shift>> normals;
    };
    struct Bone {
        std::size_t joint;  // of the pose
        Matrix3 bone_from_mesh;
    };

    bool is_still() const;

    /// The ticks around `t` in which the mesh stays as it is.
    Interval validity(TimeValue t) const;

    /// `at_rest` is the mesh that the deformation was made for, and `mesh` the same as of any time.
    void apply(TimeValue t, const Mesh& at_rest, Mesh& mesh) const;

private:
    friend class MeshDeformationBuilder;

    explicit MeshDeformation(ModelPose pose) : pose_(std::move(pose)) {}

    void move_to_targets(TimeValue t, Mesh& mesh) const;
    void move_with_bones(TimeValue t, Mesh& mesh) const;

    ModelPose pose_;  // seen from the node that shows the mesh
    std::vector<Morph> morphs_;
    std::vector<Bone> bones_;
    std::vector<BoneWeights::Influence> influences_;  // vertex by vertex
    std::vector<std::size_t> ends_;                   // of each vertex in that list
    std::vector<Point3> rest_normals_;
    std::vector<std::uint32_t> vertex_of_normal_;
};

}  // namespace vsqexport
