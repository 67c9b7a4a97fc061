#include "tools/vsqexport/import/deforming_parts.h"

#include <cmath>
#include <utility>

#include "tools/vsqexport/import/left_out.h"
#include "tools/vsqexport/import/model_reader.h"

namespace vsqexport {
namespace {

// The FBX reader gives most targets their full weight, whatever the file says.
float rest_weight(const aiAnimMesh& target, bool is_fbx) {
    return is_fbx || !std::isfinite(target.mWeight) ? 0.0f : target.mWeight;
}

std::vector<MorphTarget> read_targets(const aiMesh& mesh, bool is_fbx, LeftOut& left_out) {
    std::vector<MorphTarget> targets;
    // A target that is left out keeps its index, since keys refer to targets by index.
    static const aiAnimMesh kNothing;
    for (unsigned i = 0; i < mesh.mNumAnimMeshes; ++i) {
        const aiAnimMesh* target = mesh.mAnimMeshes[i];
        if (!target || target->mNumVertices != mesh.mNumVertices) {
            left_out.add(mesh.mName.C_Str(), "its number of vertices is not its mesh's");
            target = &kNothing;
        }
        targets.push_back({target, rest_weight(*target, is_fbx),
                           mesh.mMethod == aiMorphingMethod_MORPH_RELATIVE});
    }
    return targets;
}

}  // namespace

DeformingParts::DeformingParts(const aiScene& model, const NodeIndex& nodes,
                               const ModelAnimation& animation, ImportWarnings& warnings)
    : animation_(animation) {
    LeftOut bones("bone", "import-bone");
    LeftOut targets("morph target of", "import-morph-target");
    int broken_weights = 0;
    const bool is_fbx = reader_of(model) == kFbxReader;
    for (unsigned i = 0; i < model.mNumMeshes; ++i) {
        const aiMesh& mesh = *model.mMeshes[i];
        Deforming deforming = {read_bone_weights(mesh, nodes, bones, broken_weights),
                               read_targets(mesh, is_fbx, targets)};
        if (!deforming.bones.bones.empty() || !deforming.targets.empty()) {
            meshes_.emplace(&mesh, std::move(deforming));
        }
    }
    bones.warn(warnings);
    targets.warn(warnings);
    if (broken_weights > 0) {
        warnings.push_back({"import-weights",
                            "weights of its bones are left out: " + std::to_string(broken_weights) +
                                " are invalid or belong to vertices that don't exist"});
    }
}

bool DeformingParts::join(const aiNode& node, const std::vector<MeshPart>& parts, Mesh& target,
                          std::shared_ptr<const MeshDeformation>& deformation) const {
    MeshDeformationBuilder builder(node, animation_);
    for (const MeshPart& part : parts) {
        static const Deforming kStill{};
        const auto found = meshes_.find(part.mesh);
        const Deforming& deforming = found == meshes_.end() ? kStill : found->second;
        builder.add_part(*part.mesh, deforming.bones, deforming.targets,
                         animation_.morph_of(node, *part.mesh));
    }
    std::vector<std::uint32_t> vertex_of_source;
    if (!join_parts(parts, builder.motion_numbers(), target, vertex_of_source)) {
        return false;
    }
    deformation = std::make_shared<MeshDeformation>(builder.finish(target, vertex_of_source));
    return true;
}

}  // namespace vsqexport
