#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include <assimp/scene.h>

#include "tools/vsqexport/import/mesh_deformation.h"

namespace vsqexport {

/// A morph target of a mesh.
struct MorphTarget {
    const aiAnimMesh* mesh;
    float rest_weight;
    bool is_change;  ///< the target holds offsets of positions, not positions
};

/// Builds the deformation of a mesh that is joined from a model's parts:
///
///     MeshDeformationBuilder builder(node, animation);
///     builder.add_part(...);  // for each part, in order
///     join_parts(parts, builder.motion_numbers(), mesh, vertex_of_source);
///     MeshDeformation deformation = builder.finish(mesh, vertex_of_source);
class MeshDeformationBuilder {
public:
    MeshDeformationBuilder(const aiNode& node, const ModelAnimation& animation)
        : animation_(animation), result_(ModelPose(node, animation)) {}

    /// `motion` can be null.
    void add_part(const aiMesh& mesh, const BoneWeights& bones,
                  const std::vector<MorphTarget>& targets,
                  std::shared_ptr<const MorphMotion> motion);

    /// A number for each source, which is a vertex of a part, counted through all parts. Sources
    /// with the same number move in the same way.
    std::vector<std::uint32_t> motion_numbers() const;

    /// Call this only once.
    MeshDeformation finish(Mesh& mesh, const std::vector<std::uint32_t>& vertex_of_source);

private:
    // Something that moves a source: a bone or a target.
    struct Pull {
        std::size_t by;            // the index of a bone, or of a target counted after the bones
        std::array<float, 3> how;  // a bone's weight, or a target's offset
    };

    std::size_t number_of(const BoneWeights::Bone& bone);
    void add_bones(const BoneWeights& bones, unsigned vertices);
    void add_targets(const aiMesh& mesh, const std::vector<MorphTarget>& targets,
                     std::shared_ptr<const MorphMotion> motion);
    std::vector<std::vector<Pull>> pulls() const;

    const ModelAnimation& animation_;
    MeshDeformation result_;          // indexed by source until `finish`
    std::uint32_t first_source_ = 0;  // of the part that is added next
    std::map<std::pair<std::size_t, std::array<float, 12>>, std::size_t> bone_numbers_;
};

}  // namespace vsqexport
