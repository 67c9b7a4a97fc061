#pragma once

#include <functional>
#include <vector>

#include "standins/host/sdk/max.h"

namespace memhost {

/// From `tick` on the mesh is this one.
struct MeshKey {
    TimeValue tick = 0;
    Mesh mesh;
};

/// A mesh over time: one whose vertices move, or a list of meshes that each hold until the next, or
/// both.
///
///     DeformingMesh flag(grid_mesh(10, 6, 30));
///     flag.moves([](TimeValue t, const Mesh& at_rest, Mesh& mesh) { ... }).rests({0, 1600});
///
/// How long it stays as it is at a tick is told as far as it is known: within one tick where it
/// moves, for ever only if there is one mesh that never does.
class DeformingMesh {
public:
    /// Moves the vertices of `mesh`, and its normals if they are specified, to where they are at
    /// `t`. `at_rest` is the mesh of the key; `mesh` is the same as of some other time.
    using Motion = std::function<void(TimeValue t, const Mesh& at_rest, Mesh& mesh)>;
    /// The ticks around `t` in which the motion leaves everything where it is at `t`.
    using MotionValidity = std::function<Interval(TimeValue t)>;

    explicit DeformingMesh(const Mesh& mesh) : DeformingMesh({{0, mesh}}) {}
    /// Keys come in the order of their ticks; there is one at least. The first holds from the
    /// beginning of time.
    DeformingMesh(std::vector<MeshKey> keys) : keys_(std::move(keys)) {}

    DeformingMesh& moves(Motion motion);
    /// The motion stops there and stays as it is at the beginning, or, if that is the beginning of
    /// time, at the end.
    DeformingMesh& rests(const Interval& rest);
    /// For a motion that knows itself when it rests.
    DeformingMesh& moves(Motion motion, MotionValidity validity);

    Interval validity(TimeValue t) const;
    const Mesh& at_rest(TimeValue t) const;
    /// Moves the vertices of `mesh`, a copy of `at_rest(t)` as of any time.
    void deform(TimeValue t, Mesh& mesh) const;

private:
    std::size_t key_at(TimeValue t) const;
    const Interval* rest_at(TimeValue t) const;

    std::vector<MeshKey> keys_;
    Motion motion_;
    MotionValidity motion_validity_;  // where it isn't a matter of `rests_`
    std::vector<Interval> rests_;
};

}  // namespace memhost
