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

/// Moves the vertices and the specified normals of a mesh: first by its morph targets, then by its
/// bones.
class MeshDeformation {
public:
    /// A change of one vertex or normal.
    struct Shift {
        std::uint32_t number;
        Point3 by;
    };
    /// The morph targets of one part of the mesh.
    struct Morph {
        std::shared_ptr<const MorphMotion> motion;  // can be null
        std::vector<float> rest_weights;            // by target, for those without keys
        std::vector<std::vector<Shift>> vertices;   // by target
        std::vector<std::vector<Shift>> normals;
    };
    struct Bone {
        std::size_t joint;  // index in the pose
        Matrix3 bone_from_mesh;
    };

    bool is_still() const;

    /// The ticks around `t` in which the mesh keeps its shape.
    Interval validity(TimeValue t) const;

    /// Gives `mesh` its shape at `t`. `at_rest` is the mesh that the deformation was made for, and
    /// `mesh` is a copy of it in the shape of any time.
    void apply(TimeValue t, const Mesh& at_rest, Mesh& mesh) const;

private:
    friend class MeshDeformationBuilder;

    explicit MeshDeformation(ModelPose pose) : pose_(std::move(pose)) {}

    void move_to_targets(TimeValue t, Mesh& mesh) const;
    void move_with_bones(TimeValue t, Mesh& mesh) const;

    ModelPose pose_;  // relative to the node that shows the mesh
    std::vector<Morph> morphs_;
    std::vector<Bone> bones_;
    std::vector<BoneWeights::Influence> influences_;  // vertex by vertex
    std::vector<std::size_t> ends_;                   // each vertex's end in `influences_`
    std::vector<Point3> rest_normals_;
    std::vector<std::uint32_t> vertex_of_normal_;
};

}  // namespace vsqexport
