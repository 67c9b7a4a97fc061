#include "tools/vsqexport/import/node_index.h"

#include <vector>

namespace vsqexport {

NodeIndex::NodeIndex(const aiScene& model) {
    std::vector<const aiNode*> left = {model.mRootNode};
    while (!left.empty()) {
        const aiNode* node = left.back();
        left.pop_back();
        nodes_.emplace(node->mName.C_Str(), node);
        for (unsigned i = node->mNumChildren; i-- > 0;) {
            if (node->mChildren[i]) {  // some readers count more children than they make
                left.push_back(node->mChildren[i]);
            }
        }
    }
}

const aiNode* NodeIndex::find(const aiString& name) const {
    const auto found = nodes_.find(name.C_Str());
    return found == nodes_.end() ? nullptr : found->second;
}

}  // namespace vsqexport
