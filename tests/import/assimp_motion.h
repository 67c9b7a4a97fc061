#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include <assimp/postprocess.h>
#include <assimp/scene.h>
#include <assimp/Importer.hpp>

#include "standins/host/sdk/max.h"

/// A model's motion as assimp's own types have it.
class AssimpMotion {
public:
    AssimpMotion(const std::string& path, double ticks_per_second) {
        importer_.SetPropertyBool(AI_CONFIG_IMPORT_COLLADA_USE_COLLADA_NAMES, true);
        model_ = importer_.ReadFile(path, aiProcess_Triangulate);
        ticks_per_second_ = ticks_per_second;
    }

    const aiScene& model() const { return *model_; }
    const aiAnimation& animation() const { return *model_->mAnimations[0]; }
    const aiNode* find(const std::string& name) const {
        return model_->mRootNode->FindNode(name.c_str());
    }

    aiMatrix4x4 local(const aiNode& node, TimeValue t) const {
        for (unsigned i = 0; i < animation().mNumChannels; ++i) {
            const aiNodeAnim& channel = *animation().mChannels[i];
            if (channel.mNodeName == node.mName) {
                const double time = t * ticks_per_second_ / TIME_TICKSPERSEC;
                aiMatrix4x4 moved, scaled;
                aiMatrix4x4::Translation(at(channel.mPositionKeys, channel.mNumPositionKeys, time),
                                         moved);
                aiMatrix4x4::Scaling(at(channel.mScalingKeys, channel.mNumScalingKeys, time),
                                     scaled);
                const aiQuaternion turn = at(channel.mRotationKeys, channel.mNumRotationKeys, time);
                return moved * aiMatrix4x4(turn.GetMatrix()) * scaled;
            }
        }
        return node.mTransformation;
    }

    aiMatrix4x4 world(const aiNode& node, TimeValue t) const {
        return node.mParent ? world(*node.mParent, t) * local(node, t) : local(node, t);
    }

    /// By target, `t` being a tick of the host.
    std::vector<float> morph_weights(const aiNode& node, const aiMesh& mesh, TimeValue t) const {
        std::vector<float> weights;
        for (unsigned i = 0; i < mesh.mNumAnimMeshes; ++i) {
            weights.push_back(mesh.mAnimMeshes[i]->mWeight);
        }
        const double time = t * ticks_per_second_ / TIME_TICKSPERSEC;
        for (unsigned i = 0; i < animation().mNumMorphMeshChannels; ++i) {
            const aiMeshMorphAnim& channel = *animation().mMorphMeshChannels[i];
            if (channel.mName != node.mName) {
                continue;
            }
            unsigned next = 0;
            while (next + 1 < channel.mNumKeys && channel.mKeys[next].mTime <= time) {
                ++next;
            }
            const aiMeshMorphKey& b = channel.mKeys[next];
            const aiMeshMorphKey& a = channel.mKeys[next == 0 ? 0 : next - 1];
            const double gap = b.mTime - a.mTime;
            const double part = gap > 0 ? std::min((time - a.mTime) / gap, 1.0) : 0;
            for (unsigned k = 0; k < b.mNumValuesAndWeights; ++k) {
                weights[b.mValues[k]] =
                    static_cast<float>(a.mWeights[k] * (1 - part) + b.mWeights[k] * part);
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
    template <typename Key>
    static decltype(Key::mValue) at(const Key* keys, unsigned count, double time) {
        for (unsigned i = 0; i < count; ++i) {
            if (time < keys[i].mTime) {
                const Key& last = keys[i == 0 ? 0 : i - 1];
                const double gap = keys[i].mTime - last.mTime;
                return mix(last.mValue, keys[i].mValue,
                           gap > 0 ? static_cast<float>((time - last.mTime) / gap) : 0.0f);
            }
        }
        return keys[count - 1].mValue;
    }

    Assimp::Importer importer_;
    const aiScene* model_ = nullptr;
    double ticks_per_second_ = 0;
};
