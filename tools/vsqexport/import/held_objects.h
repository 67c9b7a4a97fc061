#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include <assimp/scene.h>

#include "standins/host/sdk/max.h"

namespace vsqexport {

/// A camera or a light with its transform into its node's space. A model lists these apart from its
/// nodes.
struct HeldObject {
    std::string name;
    std::shared_ptr<Object> object;
    Matrix3 node_from_object;
};

using HeldObjects = std::map<const aiNode*, std::vector<HeldObject>>;

/// The position of a camera or a light relative to its node. Some readers repeat the node's own
/// position here, which counts as none.
inline Point3 place_in_node(const aiNode& node, const aiVector3D& position) {
    const aiMatrix4x4& m = node.mTransformation;
    const bool repeats_node = position.Equal({m.a4, m.b4, m.c4}, 1e-4f * (1 + position.Length()));
    return repeats_node ? Point3(0, 0, 0) : Point3(position.x, position.y, position.z);
}

}  // namespace vsqexport
