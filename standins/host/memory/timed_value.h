#pragma once

#include <functional>
#include <utility>

#include "standins/host/sdk/max.h"

namespace memhost {

/// A value of an object: a constant or a function of time.
template <typename T>
class TimedValue {
public:
    TimedValue(T fixed) : fixed_(std::move(fixed)) {}
    /// A constant colour or point, so that calls can write `color({1, 0.5f, 0})`.
    TimedValue(float x, float y, float z) : fixed_(x, y, z) {}
    template <typename Function, typename = decltype(std::declval<Function>()(TimeValue()))>
    TimedValue(Function moving) : moving_(std::move(moving)) {}

    T at(TimeValue t) const { return moving_ ? moving_(t) : fixed_; }

    /// Narrows `valid` to that time if the value changes.
    T at(TimeValue t, Interval& valid) const {
        if (moving_) {
            valid &= Interval(t, t);
        }
        return at(t);
    }

private:
    T fixed_{};
    std::function<T(TimeValue)> moving_;  // empty for a constant
};

using TimedNumber = TimedValue<float>;
using TimedColor = TimedValue<Color>;

}  // namespace memhost
