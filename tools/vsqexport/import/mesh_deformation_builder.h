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

/// A mesh that another one can be on the way to.
struct MorphTarget {
    const aiAnimMesh* mesh;
    float rest_weight;
    bool is_change;  ///< it holds changes of positions and not the positions themselves
};

/// Makes the deformation of a mesh that is joined of a model's parts:
///
///     MeshDeformationBuilder builder(node, animation);
///     builder.add_part(...);  // each, in their order
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

    /// A number for each source, which is a vertex of a part, counted through all parts. Those with
    /// one number move alike.
    std::vector<std::uint32_t> motion_numbers() const;

    /// Once only.
    MeshDeformation finish(Mesh& mesh, const std::vector<std::uint32_t>& vertex_of_source);

private:
    // One thing that moves a source: a bone with its weight, or a target with its change.
    struct Pull {
        std::size_t by;
        std::array<float, 3> how;
    };

    std::size_t number_of(const BoneWeights::Bone& bone);
    void add_bones(const BoneWeights& bones, unsigned vertices);
    void add_targets(const aiMesh& mesh, const std::vector<MorphTarget>& targets,
                     std::shared_ptr<const MorphMotion> motion);
    std::vector<std::vector<Pull>> pulls() const;

    const ModelAnimation& animation_;
    MeshDeformation result_;          // by source, until there is a mesh
    std::uint32_t first_source_ = 0;  // of the part under way
    std::map<std::pair<std::size_t, std::array<float, 12>>, std::size_t> bone_numbers_;
};

}  // namespace vsqexport
