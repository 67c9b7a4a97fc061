#pragma once

#include <map>
#include <vector>

#include <assimp/anim.h>

#include "standins/host/sdk/max.h"
#include "tools/vsqexport/import/key_track.h"

namespace vsqexport {

/// The weights of a mesh's morph targets at any tick of the host.
class MorphMotion {
public:
    MorphMotion(const aiMeshMorphAnim& channel, double file_ticks_per_second,
                Interpolation interpolation = Interpolation::kLinear);

    int dropped_keys() const { return dropped_keys_; }

    bool is_still() const;

    /// The last key's time; 0 if there are no keys after time 0.
    double end_seconds() const;

    /// Sets the weights of the targets that have keys.
    void apply(TimeValue t, std::vector<float>& weights) const;

    /// Narrows `valid` to the ticks around `t` at which the weights stay the same.
    void narrow_to_rest(TimeValue t, Interval& valid) const;

private:
    std::map<unsigned, KeyTrack<1>> weights_;  // by target
    double file_ticks_per_second_;
    int dropped_keys_ = 0;
};

}  // namespace vsqexport
