#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <assimp/scene.h>

#include "standins/host/sdk/max.h"
#include "tools/vsqexport/import/left_out.h"
#include "tools/vsqexport/import/node_index.h"

namespace vsqexport {

/// The bones of one mesh of a model as its vertices see them.
struct BoneWeights {
    struct Bone {
        const aiNode* node;
        Matrix3 bone_from_mesh;
    };
    struct Influence {
        std::size_t bone;
        float weight;  // those of a vertex add up to 1
    };

    std::vector<Bone> bones;
    std::vector<Influence> influences;  // vertex by vertex
    std::vector<std::size_t> ends;      // of each vertex in that list; empty without bones
};

/// What can't be had goes to `left_out`: bones that no node stands for. Weights of vertices that
/// aren't there, and those that aren't numbers, are only counted.
BoneWeights read_bone_weights(const aiMesh& mesh, const NodeIndex& nodes, LeftOut& left_out,
                              int& broken_weights);

}  // namespace vsqexport
