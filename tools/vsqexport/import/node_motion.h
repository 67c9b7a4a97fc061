#pragma once

#include <assimp/anim.h>
#include <assimp/matrix4x4.h>

#include "standins/host/sdk/max.h"
#include "tools/vsqexport/import/gltf_curves.h"
#include "tools/vsqexport/import/key_track.h"

namespace vsqexport {

/// The curves of a channel that aren't linear; null for those that are.
struct ChannelCurves {
    const GltfCurve* position = nullptr;
    const GltfCurve* rotation = nullptr;
    const GltfCurve* scale = nullptr;
};

/// The motion of one node, computed at any tick of the host from assimp's channel of keys.
///
/// Positions and scales are interpolated linearly between keys, rotations along the shorter arc,
/// unless the file has steps or splines.
/// Before the first key and after the last, the nearest key holds, unless the channel says that the
/// motion is extrapolated or repeats.
class NodeMotion {
public:
    /// A component without keys stays as it is in `rest`, the node's own matrix. Keys can come in
    /// any order; those that hold NaN or infinity are dropped.
    NodeMotion(const aiNodeAnim& channel, const aiMatrix4x4& rest, double file_ticks_per_second,
               const ChannelCurves& curves = {});

    int dropped_keys() const { return dropped_keys_; }

    /// True if the node never moves.
    bool is_still() const;

    /// The last key's time; below 0 if all keys come before time 0.
    double end_seconds() const;

    /// The matrix from the node's space to its parent's.
    Matrix3 at(TimeValue t) const;

    /// Narrows `valid` to the ticks around `t` at which the node stays where it is. Between
    /// neighbouring keys that are not equal, this is `t` alone.
    void narrow_to_rest(TimeValue t, Interval& valid) const;

private:
    double file_ticks_per_second_;
    KeyTrack<3> positions_;
    KeyTrack<4> rotations_;  // w, x, y, z; of unit length, with no negative dot product in between
    KeyTrack<3> scales_;
    int dropped_keys_ = 0;
};

}  // namespace vsqexport
