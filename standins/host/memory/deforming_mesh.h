#pragma once

#include <functional>
#include <vector>

#include "standins/host/sdk/max.h"

namespace memhost {

/// The mesh that applies from `tick` on.
struct MeshKey {
    TimeValue tick = 0;
    Mesh mesh;
};

/// A mesh that changes over time. Its vertices can move, other meshes can replace it at given
/// ticks, or both.
///
///     DeformingMesh flag(grid_mesh(10, 6, 30));
///     flag.moves([](TimeValue t, const Mesh& at_rest, Mesh& mesh) { ... }).rests({0, 1600});
///
/// `validity` tells how long the mesh stays the same, as far as that is known: for a single tick
/// while it moves, and for ever only if there is one mesh that never moves.
class DeformingMesh {
public:
    /// Moves the vertices of `mesh`, and its specified normals if it has any, to where they are at
    /// `t`. `at_rest` is the key's mesh before any motion. `mesh` is a copy of it in its shape at
    /// some other time.
    using Motion = std::function<void(TimeValue t, const Mesh& at_rest, Mesh& mesh)>;
    /// The ticks around `t` in which the motion changes nothing.
    using MotionValidity = std::function<Interval(TimeValue t)>;

    explicit DeformingMesh(const Mesh& mesh) : DeformingMesh({{0, mesh}}) {}
    /// Keys must be in order of their ticks, and there must be at least one. The first also applies
    /// before its tick.
    DeformingMesh(std::vector<MeshKey> keys) : keys_(std::move(keys)) {}

    DeformingMesh& moves(Motion motion);
    /// Stops the motion during `rest`. The mesh stays as it is at the start of the interval, or at
    /// its end if the interval has no start.
    DeformingMesh& rests(const Interval& rest);
    /// For a motion that can tell when it rests.
    DeformingMesh& moves(Motion motion, MotionValidity validity);

    Interval validity(TimeValue t) const;
    const Mesh& at_rest(TimeValue t) const;
    /// Moves the vertices of `mesh` to where they are at `t`. `mesh` must be a copy of
    /// `at_rest(t)`, but may already have been moved to another time.
    void deform(TimeValue t, Mesh& mesh) const;

private:
    std::size_t key_at(TimeValue t) const;
    const Interval* rest_at(TimeValue t) const;

    std::vector<MeshKey> keys_;
    Motion motion_;
    MotionValidity motion_validity_;  // replaces `rests_` in `validity` unless empty
    std::vector<Interval> rests_;
};

}  // namespace memhost
