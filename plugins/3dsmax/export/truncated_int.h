#pragma once

#include <limits>

/// The whole part of `number`, as the host's processors convert it: what doesn't fit an `int`, NaN
/// included, gives the least `int`.
inline int TruncateToInt(double number) {
    constexpr double kBelowLeast = -2147483649.0;
    constexpr double kAboveGreatest = 2147483648.0;
    if (number > kBelowLeast && number < kAboveGreatest) {
        return static_cast<int>(number);
    }
    return std::numeric_limits<int>::min();
}
