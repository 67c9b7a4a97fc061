#include "tools/vsqexport/import/animation_choice.h"

#include <algorithm>
#include <cstdio>
#include <set>

#include "tools/vsqexport/import/model_reader.h"

namespace vsqexport {
namespace {

template <typename Key>
bool differ(const Key* keys, unsigned count) {
    return std::any_of(keys, keys + count,
                       [keys](const Key& key) { return !(key.mValue == keys[0].mValue); });
}

bool moves(const aiMeshMorphAnim& channel) {
    const aiMeshMorphKey* const keys = channel.mKeys;
    return std::any_of(keys, keys + channel.mNumKeys, [keys](const aiMeshMorphKey& key) {
        return key.mNumValuesAndWeights != keys[0].mNumValuesAndWeights ||
               !std::equal(key.mWeights, key.mWeights + key.mNumValuesAndWeights, keys[0].mWeights);
    });
}

struct Candidate {
    const aiAnimation* animation;
    double seconds;
    std::set<std::string> moved;  // nodes, and morph targets with a mark in front
};

std::string name_of(const aiAnimation& animation) {
    return "\"" + std::string(animation.mName.C_Str()) + "\"";
}

std::string seconds_text(double seconds) {
    char text[32];
    std::snprintf(text, sizeof text, "%.3g s", seconds);
    return text;
}

Candidate candidate_of(const aiScene& model, const aiAnimation& animation) {
    Candidate candidate{&animation, 0, {}};
    double last_tick = 0;
    const auto look_at = [&last_tick](const auto* keys, unsigned count) {
        for (unsigned i = 0; i < count; ++i) {
            last_tick = std::max(last_tick, keys[i].mTime);
        }
    };
    for (unsigned i = 0; i < animation.mNumChannels; ++i) {
        const aiNodeAnim& channel = *animation.mChannels[i];
        look_at(channel.mPositionKeys, channel.mNumPositionKeys);
        look_at(channel.mRotationKeys, channel.mNumRotationKeys);
        look_at(channel.mScalingKeys, channel.mNumScalingKeys);
        if (vsqexport::moves(channel)) {
            candidate.moved.insert(channel.mNodeName.C_Str());
        }
    }
    for (unsigned i = 0; i < animation.mNumMorphMeshChannels; ++i) {
        const aiMeshMorphAnim& channel = *animation.mMorphMeshChannels[i];
        look_at(channel.mKeys, channel.mNumKeys);
        if (moves(channel)) {
            candidate.moved.insert("*" + std::string(channel.mName.C_Str()));
        }
    }
    candidate.seconds = last_tick / ticks_per_second(model, animation);
    return candidate;
}

std::vector<Candidate> candidates_of(const aiScene& model, const std::vector<std::string>& wanted) {
    std::vector<Candidate> candidates;
    std::set<std::string> found;
    for (unsigned i = 0; i < model.mNumAnimations; ++i) {
        const aiAnimation& animation = *model.mAnimations[i];
        const std::string name = animation.mName.C_Str();
        found.insert(name);
        const bool has_keys = animation.mNumChannels != 0 || animation.mNumMorphMeshChannels != 0;
        const bool is_wanted =
            wanted.empty() || std::find(wanted.begin(), wanted.end(), name) != wanted.end();
        if (has_keys && is_wanted) {
            candidates.push_back(candidate_of(model, animation));
        }
    }
    for (const std::string& name : wanted) {
        if (found.count(name) == 0) {
            throw UnknownAnimation("it has no animation '" + name + "' (--animations lists them)");
        }
    }
    return candidates;
}

}  // namespace

double ticks_per_second(const aiScene& model, const aiAnimation& animation) {
    constexpr double kMost = 1e9;
    const double given = animation.mTicksPerSecond;
    if (given > 0.0 && given < kMost) {
        return given;
    }
    return reader_of(model) == k3dsReader ? 30.0 : 25.0;
}

bool moves(const aiNodeAnim& channel) {
    return differ(channel.mPositionKeys, channel.mNumPositionKeys) ||
           differ(channel.mRotationKeys, channel.mNumRotationKeys) ||
           differ(channel.mScalingKeys, channel.mNumScalingKeys);
}

std::vector<const aiAnimation*> choose_animations(const aiScene& model,
                                                  const std::vector<std::string>& wanted,
                                                  ImportWarnings& warnings) {
    std::vector<Candidate> candidates = candidates_of(model, wanted);
    std::stable_sort(
        candidates.begin(), candidates.end(), [](const Candidate& a, const Candidate& b) {
            return a.moved.empty() != b.moved.empty() ? b.moved.empty() : a.seconds > b.seconds;
        });
    std::vector<const aiAnimation*> chosen;
    std::set<std::string> moved;
    std::string left_out;
    for (const Candidate& candidate : candidates) {
        const bool is_free =
            std::none_of(candidate.moved.begin(), candidate.moved.end(),
                         [&moved](const std::string& name) { return moved.count(name) != 0; });
        // Several that rest are takes as well.
        if (is_free && (!candidate.moved.empty() || chosen.empty())) {
            chosen.push_back(candidate.animation);
            moved.insert(candidate.moved.begin(), candidate.moved.end());
        } else {
            left_out += (left_out.empty() ? "" : ", ") + name_of(*candidate.animation) + " (" +
                        seconds_text(candidate.seconds) + ")";
        }
    }
    if (!left_out.empty()) {
        std::string names;
        for (const aiAnimation* animation : chosen) {
            names += (names.empty() ? "" : ", ") + name_of(*animation);
        }
        warnings.push_back({"import-other-animations", "animations that move the same as " + names +
                                                           " are left out: " + left_out});
    }
    for (unsigned i = 0; i < model.mNumAnimations; ++i) {
        if (model.mAnimations[i]->mNumMeshChannels != 0) {
            warnings.push_back(
                {"import-mesh-animations", "animations that replace its meshes are left out"});
            break;
        }
    }
    return chosen;
}

std::string list_of_animations(const aiScene& model) {
    std::string list;
    for (unsigned i = 0; i < model.mNumAnimations; ++i) {
        const aiAnimation& animation = *model.mAnimations[i];
        const Candidate candidate = candidate_of(model, animation);
        list += name_of(animation) + ": " + seconds_text(candidate.seconds) + ", moves " +
                std::to_string(candidate.moved.size()) + " of " +
                std::to_string(animation.mNumChannels + animation.mNumMorphMeshChannels) +
                " nodes and morph targets\n";
    }
    return list;
}

}  // namespace vsqexport
