#include "tools/vsqexport/import/bone_weights.h"

#include <cmath>

#include "tools/vsqexport/import/matrix_conversion.h"

namespace vsqexport {
namespace {

bool is_finite(const aiMatrix4x4& matrix) {
    for (unsigned row = 0; row < 4; ++row) {
        for (unsigned column = 0; column < 4; ++column) {
            if (!std::isfinite(matrix[row][column])) {
                return false;
            }
        }
    }
    return true;
}

// Calls `visit(bone, vertex, weight)` for each valid weight above 0.
template <typename Visit>
void for_each_weight(const aiMesh& mesh, const std::vector<const aiBone*>& bones,
                     const Visit& visit) {
    for (std::size_t b = 0; b < bones.size(); ++b) {
        for (unsigned i = 0; i < bones[b]->mNumWeights; ++i) {
            const aiVertexWeight& weight = bones[b]->mWeights[i];
            if (weight.mVertexId < mesh.mNumVertices && std::isfinite(weight.mWeight) &&
                weight.mWeight > 0) {
                visit(b, weight.mVertexId, weight.mWeight);
            }
        }
    }
}

}  // namespace

BoneWeights read_bone_weights(const aiMesh& mesh, const NodeIndex& nodes, LeftOut& left_out,
                              int& broken_weights) {
    BoneWeights result;
    std::vector<const aiBone*> bones;
    for (unsigned b = 0; b < mesh.mNumBones; ++b) {
        const aiBone* bone = mesh.mBones[b];
        if (!bone || bone->mNumWeights == 0 || !bone->mWeights) {
            continue;
        }
        const aiNode* node = nodes.find(bone->mName);
        if (!node || !is_finite(bone->mOffsetMatrix)) {
            left_out.add(bone->mName.C_Str(),
                         node ? "its matrix isn't finite" : "no node has its name");
            continue;
        }
        for (unsigned i = 0; i < bone->mNumWeights; ++i) {
            const aiVertexWeight& weight = bone->mWeights[i];
            broken_weights += weight.mVertexId >= mesh.mNumVertices ||
                              !std::isfinite(weight.mWeight) || weight.mWeight < 0;
        }
        bones.push_back(bone);
        result.bones.push_back({node, host_matrix(bone->mOffsetMatrix)});
    }
    if (bones.empty()) {
        return result;
    }

    // `ends` first holds counts, then starts. Each start moves to its vertex's end as the
    // influences are filled in.
    result.ends.assign(mesh.mNumVertices, 0);
    std::vector<double> sums(mesh.mNumVertices, 0.0);
    for_each_weight(mesh, bones, [&](std::size_t, unsigned vertex, float weight) {
        ++result.ends[vertex];
        sums[vertex] += weight;
    });
    std::size_t count = 0;
    for (std::size_t& end : result.ends) {
        const std::size_t start = count;
        count += end;
        end = start;
    }
    result.influences.resize(count);
    for_each_weight(mesh, bones, [&](std::size_t bone, unsigned vertex, float weight) {
        result.influences[result.ends[vertex]++] = {bone,
                                                    static_cast<float>(weight / sums[vertex])};
    });
    return result;
}

}  // namespace vsqexport
