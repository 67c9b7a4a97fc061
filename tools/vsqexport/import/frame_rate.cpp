#include "tools/vsqexport/import/frame_rate.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <vector>

#include "standins/host/sdk/max.h"
#include "tools/vsqexport/import/animation_choice.h"
#include "tools/vsqexport/import/model_reader.h"

namespace vsqexport {
namespace {

constexpr double kNtscFilm = 24000 / 1001.0;
constexpr double kNtsc = 30000 / 1001.0;

// The time modes of FBX files by number; 0 for those that name no rate.
constexpr double kFbxRates[] = {0,     120, 100, 60,   50,        48, 30, 30, kNtsc,
                                kNtsc, 25,  24,  1000, kNtscFilm, 0,  96, 72, 2 * kNtsc};
constexpr std::int32_t kFbxCustomMode = 14;

std::optional<double> sensible(double rate) {
    return rate >= 1 && rate <= TIME_TICKSPERSEC ? std::optional<double>(rate) : std::nullopt;
}

std::optional<double> fbx_rate(const aiScene& model) {
    std::int32_t mode = 0;
    if (!model.mMetaData || !model.mMetaData->Get("FrameRate", mode)) {
        return std::nullopt;
    }
    if (mode == kFbxCustomMode) {
        float rate = 0;
        model.mMetaData->Get("CustomFrameRate", rate);
        return sensible(rate);
    }
    return mode >= 0 && mode < static_cast<std::int32_t>(std::size(kFbxRates))
               ? sensible(kFbxRates[mode])
               : std::nullopt;
}

// In seconds, without 0, which is a frame at any rate.
std::vector<double> key_times(const aiScene& model) {
    std::vector<double> times;
    for (unsigned a = 0; a < model.mNumAnimations; ++a) {
        const aiAnimation& animation = *model.mAnimations[a];
        const double rate = ticks_per_second(model, animation);
        const auto take = [&](const auto* keys, unsigned count) {
            for (unsigned i = 0; i < count; ++i) {
                if (keys[i].mTime > 0 && std::isfinite(keys[i].mTime)) {
                    times.push_back(keys[i].mTime / rate);
                }
            }
        };
        for (unsigned i = 0; i < animation.mNumChannels; ++i) {
            const aiNodeAnim& channel = *animation.mChannels[i];
            take(channel.mPositionKeys, channel.mNumPositionKeys);
            take(channel.mRotationKeys, channel.mNumRotationKeys);
            take(channel.mScalingKeys, channel.mNumScalingKeys);
        }
        for (unsigned i = 0; i < animation.mNumMorphMeshChannels; ++i) {
            take(animation.mMorphMeshChannels[i]->mKeys, animation.mMorphMeshChannels[i]->mNumKeys);
        }
    }
    return times;
}

// The first of the usual rates at which all keys lie on frames.
std::optional<double> rate_of_keys(const aiScene& model) {
    constexpr double kUsual[] = {30, 24, 25, 60, 50, 48, 120, 100, kNtsc, kNtscFilm, 2 * kNtsc};
    constexpr double kNoise = 0.01;  // in frames; files hold seconds as float
    const std::vector<double> times = key_times(model);
    for (const double rate : kUsual) {
        const auto is_on_frame = [rate](double seconds) {
            const double frame = seconds * rate;
            return std::abs(frame - std::round(frame)) <= kNoise;
        };
        if (!times.empty() && std::all_of(times.begin(), times.end(), is_on_frame)) {
            return rate;
        }
    }
    return std::nullopt;
}

}  // namespace

std::optional<double> frame_rate_of(const aiScene& model, const ColladaText& collada) {
    const std::string reader = reader_of(model);
    if (reader == kFbxReader) {
        return fbx_rate(model);
    }
    if (reader == kColladaReader) {
        return collada.frame_rate ? sensible(*collada.frame_rate) : std::nullopt;
    }
    return reader == kGltf2Reader ? rate_of_keys(model) : std::nullopt;
}

}  // namespace vsqexport
