#pragma once

#include <cstring>
#include <vector>

#include <assimp/scene.h>

namespace vsqexport {

/// Whether the FBX reader has added the node to hold one step of a node's transform, such as a
/// pivot. Such a node shows nothing, so its matrix can go into those of its children.
inline bool is_pivot_helper(const aiNode& node) {
    return node.mParent && node.mNumMeshes == 0 &&
           std::strstr(node.mName.C_Str(), "_$AssimpFbx$_") != nullptr;
}

/// The node's children in order. A helper is replaced by its own children.
inline std::vector<const aiNode*> children_without_helpers(const aiNode& node) {
    std::vector<const aiNode*> children;
    std::vector<const aiNode*> left;  // those to look at next are at the end
    const auto add_children_of = [&left](const aiNode& parent) {
        for (unsigned i = parent.mNumChildren; i-- > 0;) {
            if (parent.mChildren[i]) {  // some readers count more children than they make
                left.push_back(parent.mChildren[i]);
            }
        }
    };
    add_children_of(node);
    while (!left.empty()) {
        const aiNode* next = left.back();
        left.pop_back();
        if (is_pivot_helper(*next)) {
            add_children_of(*next);
        } else {
            children.push_back(next);
        }
    }
    return children;
}

}  // namespace vsqexport
