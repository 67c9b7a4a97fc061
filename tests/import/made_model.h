#pragma once

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <assimp/scene.h>

#include "tools/vsqexport/import/animation_import.h"

/// Appends a new element to one of assimp's lists.
template <typename Element>
Element& append(Element**& list, unsigned& count) {
    Element** longer = new Element*[count + 1];
    std::copy_n(list, count, longer);
    delete[] list;
    list = longer;
    return *(list[count++] = new Element);
}

/// A model with some nodes below its root, and an animation with one tick per second.
struct MadeModel : aiScene {
    explicit MadeModel(const std::vector<const char*>& names) {
        mRootNode = new aiNode("Root");
        for (const char* name : names) {
            aiNode* child = new aiNode(name);
            mRootNode->addChildren(1, &child);
        }
        add_animation("");
    }

    /// Channels that are added from now on belong to it.
    void add_animation(const char* name) {
        aiAnimation& added = append(mAnimations, mNumAnimations);
        added.mName = name;
        added.mTicksPerSecond = 1;
    }

    /// Adds a channel with keys for the height, given as time and z; rotation and scale have none.
    aiNodeAnim& move(const char* node, const std::vector<std::pair<double, float>>& keys) {
        aiNodeAnim& channel = append(mAnimations[mNumAnimations - 1]->mChannels,
                                     mAnimations[mNumAnimations - 1]->mNumChannels);
        channel.mNodeName = node;
        channel.mPositionKeys = new aiVectorKey[keys.size()];
        for (const auto& [time, z] : keys) {
            channel.mPositionKeys[channel.mNumPositionKeys++] = {time, {0, 0, z}};
        }
        return channel;
    }

    const aiNode& node(unsigned i) const { return *mRootNode->mChildren[i]; }
    vsqexport::ModelAnimation animation(const std::vector<std::string>& wanted = {}) {
        return {*this, vsqexport::NodeIndex(*this), warnings, wanted};
    }

    vsqexport::ImportWarnings warnings;
};
