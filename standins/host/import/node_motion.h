#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include <assimp/anim.h>
#include <assimp/matrix4x4.h>

#include "standins/host/sdk/max.h"

namespace memhost {

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

private:
    template <std::size_t N>
    struct Key {
        double time;  // in the file's ticks
        std::array<double, N> value;
    };
    template <std::size_t N>
    using Track = std::vector<Key<N>>;  // ascending, at least one key

    // Between the keys `from` and `to`; `part` is 0 at the one and 1 at the other.
    struct Span {
        std::size_t from;
        std::size_t to;
        double part;
    };

    template <std::size_t N>
    void add_key(Track<N>& track, const Key<N>& key);
    template <std::size_t N>
    static void finish(Track<N>& track, const std::array<double, N>& rest);
    template <std::size_t N>
    Span span_at(const Track<N>& track, double time) const;

    std::array<double, 3> vector_at(const Track<3>& track, double time) const;
    std::array<double, 4> rotation_at(double time) const;

    double file_ticks_per_second_;
    aiAnimBehaviour before_first_;
    aiAnimBehaviour behind_last_;
    Track<3> positions_;
    Track<4> rotations_;  // w, x, y, z; of unit length, no more than a quarter turn apart
    Track<3> scales_;
    int dropped_keys_ = 0;
};

}  // namespace memhost
