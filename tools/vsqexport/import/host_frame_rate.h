#pragma once

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

#include "standins/host/sdk/max.h"

namespace vsqexport {

/// The host's time has 4800 ticks a second, so that only some frame rates are possible. The nearest
/// one, as ticks per frame.
inline int nearest_ticks_per_frame(double frames_per_second) {
    return std::max(1, static_cast<int>(std::lround(TIME_TICKSPERSEC / frames_per_second)));
}

/// Says what becomes of a rate that isn't possible: "23.976 frames a second become 24". Empty for
/// one that is.
inline std::string change_of_rate(double frames_per_second) {
    const double possible =
        TIME_TICKSPERSEC / static_cast<double>(nearest_ticks_per_frame(frames_per_second));
    if (std::abs(possible - frames_per_second) < 1e-6) {
        return "";
    }
    char text[80];
    std::snprintf(text, sizeof text, "%.6g frames a second become %.6g", frames_per_second,
                  possible);
    return text;
}

}  // namespace vsqexport
