#pragma once

#include <functional>
#include <utility>
#include <variant>
#include <vector>

#include "standins/host/sdk/max.h"

namespace memhost {

/// The node's matrix from `tick` on.
struct TransformKey {
    TimeValue tick = 0;
    Matrix3 matrix;
};

/// A node's matrix in its parent's space over time: a constant, keys that each hold until the next,
/// or a function of time.
class LocalTransform {
public:
    using Function = std::function<Matrix3(TimeValue)>;

    /// Always the identity.
    LocalTransform() = default;
    explicit LocalTransform(const Matrix3& constant) : value_(constant) {}

    /// Keys may be in any order. Of several keys at one tick, the last in the list counts. The
    /// first key also holds before its tick. Without keys the matrix is the identity.
    explicit LocalTransform(std::vector<TransformKey> keys);

    /// The function is assumed to change at every tick.
    explicit LocalTransform(Function function) : value_(std::move(function)) {}

    /// The matrix at `t`. Narrows `valid` to the ticks around `t` in which it holds.
    Matrix3 at(TimeValue t, Interval& valid) const;

private:
    using Keys = std::vector<TransformKey>;  // at least one, ascending, without equal ticks

    std::variant<Matrix3, Keys, Function> value_;
};

}  // namespace memhost
