#pragma once

#include <map>
#include <string>

#include <assimp/scene.h>

namespace vsqexport {

/// Finds the nodes that a model's cameras, lights and animations name. If several nodes share a
/// name, it is the first one's, with parents before their children.
class NodeIndex {
public:
    explicit NodeIndex(const aiScene& model);

    /// Null if no node has that name.
    const aiNode* find(const aiString& name) const;

private:
    std::map<std::string, const aiNode*> nodes_;
};

}  // namespace vsqexport
