#pragma once

namespace vsqexport {

/// How the values between two keys are found.
enum class Interpolation {
    kLinear,
    kStep,   ///< the earlier key's value holds
    kCubic,  ///< a spline through both values with the keys' slopes
};

}  // namespace vsqexport
