#pragma once

#include <algorithm>
#include <limits>

#include "standins/host/sdk/maxtypes.h"

constexpr TimeValue TIME_NegInfinity = std::numeric_limits<TimeValue>::min();
constexpr TimeValue TIME_PosInfinity = std::numeric_limits<TimeValue>::max();

/// A span of time. Both ends are included.
class Interval {
public:
    /// The empty interval.
    constexpr Interval() = default;
    constexpr Interval(TimeValue start, TimeValue end) : start_(start), end_(end) {}

    constexpr TimeValue Start() const { return start_; }
    constexpr TimeValue End() const { return end_; }

    constexpr int InInterval(TimeValue t) const { return start_ <= t && t <= end_; }
    constexpr int Empty() const { return start_ > end_; }

    /// Narrows the interval to what both have in common.
    Interval& operator&=(const Interval& other) {
        *this = Interval(std::max(start_, other.start_), std::min(end_, other.end_));
        return *this;
    }

private:
    TimeValue start_ = TIME_PosInfinity;
    TimeValue end_ = TIME_NegInfinity;
};

constexpr Interval FOREVER(TIME_NegInfinity, TIME_PosInfinity);
constexpr Interval NEVER;
