#pragma once

#include <limits>

/// `number` truncated to an `int` as an x86-64 processor converts it: NaN and numbers that don't
/// fit give the lowest `int`.
inline int TruncateToInt(double number) {
    constexpr double kBelowLeast = -2147483649.0;
    constexpr double kAboveGreatest = 2147483648.0;
    if (number > kBelowLeast && number < kAboveGreatest) {
        return static_cast<int>(number);
    }
    return std::numeric_limits<int>::min();
}
