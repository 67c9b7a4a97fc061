#pragma once

#include <algorithm>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

#include <assimp/postprocess.h>
#include <assimp/scene.h>
#include <assimp/Importer.hpp>

#include "standins/host/sdk/max.h"

/// A model and its motion if it has one, computed with assimp's own types. Times are ticks of the
/// host.
class AssimpMotion {
public:
    AssimpMotion(const std::string& path, double ticks_per_second)
        : per_tick_(ticks_per_second / TIME_TICKSPERSEC) {
        importer_.SetPropertyBool(AI_CONFIG_IMPORT_COLLADA_USE_COLLADA_NAMES, true);
        model_ = importer_.ReadFile(path, aiProcess_Triangulate);
        if (model_ == nullptr) {
            throw std::runtime_error(importer_.GetErrorString());
        }
    }

    const aiScene& model() const { return *model_; }
    const aiAnimation& animation() const { return *model_->mAnimations[0]; }
    const aiNode* find(const std::string& name) const {
        return model_->mRootNode->FindNode(name.c_str());
    }

    aiMatrix4x4 local(const aiNode& node, TimeValue t) const {
        for (unsigned i = 0; model_->HasAnimations() && i < animation().mNumChannels; ++i) {
            const aiNodeAnim& channel = *animation().mChannels[i];
            if (channel.mNodeName == node.mName) {
                const aiQuaternion turn = at(channel.mRotationKeys, channel.mNumRotationKeys, t);
                aiMatrix4x4 moved, scaled;
                aiMatrix4x4::Translation(at(channel.mPositionKeys, channel.mNumPositionKeys, t),
                                         moved);
                aiMatrix4x4::Scaling(at(channel.mScalingKeys, channel.mNumScalingKeys, t), scaled);
                return moved * aiMatrix4x4(turn.GetMatrix()) * scaled;
            }
        }
        return node.mTransformation;
    }

    aiMatrix4x4 world(const aiNode& node, TimeValue t) const {
        return node.mParent ? world(*node.mParent, t) * local(node, t) : local(node, t);
    }

    /// One weight for each morph target of `mesh`.
    std::vector<float> morph_weights(const aiNode& node, const aiMesh& mesh, TimeValue t) const {
        std::vector<float> weights;
        for (unsigned i = 0; i < mesh.mNumAnimMeshes; ++i) {
            weights.push_back(mesh.mAnimMeshes[i]->mWeight);
        }
        for (unsigned i = 0; model_->HasAnimations() && i < animation().mNumMorphMeshChannels;
             ++i) {
            const aiMeshMorphAnim& channel = *animation().mMorphMeshChannels[i];
            if (channel.mName == node.mName) {
                const auto [a, b, part] = around(channel.mKeys, channel.mNumKeys, t);
                for (unsigned k = 0; k < b.mNumValuesAndWeights; ++k) {
                    weights[b.mValues[k]] =
                        static_cast<float>(a.mWeights[k] * (1 - part) + b.mWeights[k] * part);
                }
            }
        }
        return weights;
    }

private:
    static aiVector3D mix(const aiVector3D& a, const aiVector3D& b, float part) {
        return a + (b - a) * part;
    }
    static aiQuaternion mix(const aiQuaternion& a, const aiQuaternion& b, float part) {
        aiQuaternion q;
        aiQuaternion::Interpolate(q, a, b, part);
        return q.Normalize();
    }
    // The keys before and after a time, and the weight of the second one.
    template <typename Key>
    std::tuple<const Key&, const Key&, float> around(const Key* keys, unsigned count,
                                                     TimeValue t) const {
        const double time = t * per_tick_;
        const Key* b =
            std::find_if(keys, keys + count - 1, [&](const Key& key) { return time < key.mTime; });
        const Key* a = b == keys ? b : b - 1;
        const double gap = b->mTime - a->mTime;
        return {*a, *b, static_cast<float>(gap > 0 ? std::min((time - a->mTime) / gap, 1.0) : 1)};
    }
    template <typename Key>
    decltype(Key::mValue) at(const Key* keys, unsigned count, TimeValue t) const {
        const auto [a, b, part] = around(keys, count, t);
        return mix(a.mValue, b.mValue, part);
    }

    Assimp::Importer importer_;
    const aiScene* model_ = nullptr;
    double per_tick_ = 0;
};
