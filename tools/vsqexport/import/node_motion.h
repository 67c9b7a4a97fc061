#pragma once

#include <assimp/anim.h>
#include <assimp/matrix4x4.h>

#include "standins/host/sdk/max.h"
#include "tools/vsqexport/import/key_track.h"

namespace vsqexport {

/// The motion of one node: what assimp's channel of keys says at any tick of the host.
///
/// Positions and scales go straight from key to key, rotations turn along the shorter arc. Before
/// the first key and behind the last the nearest one holds, unless the channel says that the
/// motion goes on or starts anew.
class NodeMotion {
public:
    /// A component without keys stays as it is in `rest`, the node's own matrix. Keys may come in
    /// any order; those with a time or a value that isn't a number are dropped.
    NodeMotion(const aiNodeAnim& channel, const aiMatrix4x4& rest, double file_ticks_per_second);

    int dropped_keys() const { return dropped_keys_; }

    /// True if the node is at one place for ever.
    bool is_still() const;

    /// The last key's time; below 0 if all come earlier.
    double end_seconds() const;

    /// From the node's space to its parent's.
    Matrix3 at(TimeValue t) const;

    /// Narrows `valid` to the ticks around `t` at which the node stays where it is, as far as
    /// unchanging keys tell it.
    void narrow_to_rest(TimeValue t, Interval& valid) const;

private:
    double file_ticks_per_second_;
    KeyTrack<3> positions_;
    KeyTrack<4> rotations_;  // w, x, y, z; of unit length, no more than a quarter turn apart
    KeyTrack<3> scales_;
    int dropped_keys_ = 0;
};

}  // namespace vsqexport
