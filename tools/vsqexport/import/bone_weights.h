#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <assimp/scene.h>

#include "standins/host/sdk/max.h"
#include "tools/vsqexport/import/left_out.h"
#include "tools/vsqexport/import/node_index.h"

namespace vsqexport {

/// The bones of one mesh of a model, and their weights at each vertex.
struct BoneWeights {
    struct Bone {
        const aiNode* node;
        Matrix3 bone_from_mesh;
    };
    struct Influence {
        std::size_t bone;
        float weight;  // the weights of a vertex add up to 1
    };

    std::vector<Bone> bones;
    std::vector<Influence> influences;  // vertex by vertex
    std::vector<std::size_t> ends;      // each vertex's end in `influences`; empty without bones
};

/// Bones without a node or a finite matrix go to `left_out`. Weights that are negative, NaN or
/// infinite, or whose vertex doesn't exist, are dropped and only counted in `broken_weights`.
BoneWeights read_bone_weights(const aiMesh& mesh, const NodeIndex& nodes, LeftOut& left_out,
                              int& broken_weights);

}  // namespace vsqexport
