#include "tools/vsqexport/import/morph_motion.h"

#include <algorithm>

namespace vsqexport {

MorphMotion::MorphMotion(const aiMeshMorphAnim& channel, double file_ticks_per_second,
                         Interpolation interpolation)
    : file_ticks_per_second_(file_ticks_per_second) {
    for (unsigned i = 0; i < channel.mNumKeys; ++i) {
        const aiMeshMorphKey& key = channel.mKeys[i];
        for (unsigned k = 0; k < key.mNumValuesAndWeights; ++k) {
            dropped_keys_ += !weights_[key.mValues[k]].add(key.mTime, {key.mWeights[k]});
        }
    }
    for (auto& [target, weight] : weights_) {
        weight.interpolate(interpolation);
        weight.finish({0.0}, aiAnimBehaviour_CONSTANT, aiAnimBehaviour_CONSTANT);
    }
}

bool MorphMotion::is_still() const {
    return std::all_of(weights_.begin(), weights_.end(),
                       [](const auto& weight) { return weight.second.is_still(); });
}

double MorphMotion::end_seconds() const {
    double end = 0;
    for (const auto& [target, weight] : weights_) {
        end = std::max(end, weight.end());
    }
    return end / file_ticks_per_second_;
}

void MorphMotion::apply(TimeValue t, std::vector<float>& weights) const {
    const double time = t * file_ticks_per_second_ / TIME_TICKSPERSEC;
    for (const auto& [target, weight] : weights_) {
        if (target < weights.size()) {
            weights[target] = static_cast<float>(weight.between_keys(time)[0]);
        }
    }
}

void MorphMotion::narrow_to_rest(TimeValue t, Interval& valid) const {
    for (const auto& [target, weight] : weights_) {
        weight.narrow_to_rest(t, file_ticks_per_second_, valid);
    }
}

}  // namespace vsqexport
