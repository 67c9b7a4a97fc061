#pragma once

#include <functional>
#include <utility>
#include <variant>
#include <vector>

#include "standins/host/sdk/max.h"

namespace memhost {

/// From `tick` on a node has this place.
struct TransformKey {
    TimeValue tick = 0;
    Matrix3 matrix;
};

/// A node's place in its parent's space over time: one matrix for ever, keys that each hold until
/// the next, or a function of time.
class LocalTransform {
public:
    using Function = std::function<Matrix3(TimeValue)>;

    /// The identity for ever.
    LocalTransform() = default;
    explicit LocalTransform(const Matrix3& constant) : value_(constant) {}

    /// Keys may come in any order; of two at one tick the later one counts. The first holds from
    /// the beginning of time and the last to its end; without any the place is the identity.
    explicit LocalTransform(std::vector<TransformKey> keys);

    /// A function is taken to give something new at every tick.
    explicit LocalTransform(Function function) : value_(std::move(function)) {}

    /// The place at `t`. `valid` is narrowed to the ticks around `t` in which it holds.
    Matrix3 at(TimeValue t, Interval& valid) const;

private:
    using Keys = std::vector<TransformKey>;  // ascending, one at a tick, at least one

    std::variant<Matrix3, Keys, Function> value_;
};

}  // namespace memhost
