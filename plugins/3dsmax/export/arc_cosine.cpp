#include "plugins/3dsmax/export/arc_cosine.h"

#include <cmath>

namespace {

constexpr double kPi = 3.14159265358979323846;

// (asin(x) - x) / x^3 as a polynomial in z = x^2, for x from 0 to 0.5. The coefficients were fitted
// at Chebyshev points; the error is far below the rounding error.
double arc_sine_series(double z) {
    constexpr double k[] = {0.16666666666666669,  0.07499999999998433,  0.04464285714635543,
                            0.030381944138531247, 0.02237217294214989,  0.017352392720869973,
                            0.013971212973552933, 0.011479177415184906, 0.01032281435018578,
                            0.005457506718640357, 0.017400879442694025, -0.014851887071247209,
                            0.02875785136742157};
    // Summed in pairs, so that the processor can work on several terms at once.
    const double z2 = z * z;
    const double z4 = z2 * z2;
    const double low = (k[0] + k[1] * z) + (k[2] + k[3] * z) * z2;
    const double middle = (k[4] + k[5] * z) + (k[6] + k[7] * z) * z2;
    const double high = (k[8] + k[9] * z) + (k[10] + k[11] * z) * z2 + k[12] * z4;
    return low + (middle + high * z4) * z4;
}

}  // namespace

float NarrowedArcCosine(float x) {
    // A generous bound on the relative error of `angle`.
    constexpr double kMaxRelativeError = 1e-13;

    const double value = static_cast<double>(x);
    const double size = std::fabs(value);
    double angle = 0;
    if (size <= 0.5) {
        const double z = value * value;
        angle = kPi / 2 - (value + value * z * arc_sine_series(z));
    } else {
        // acos(|x|) is twice asin(sqrt((1 - |x|) / 2)), whose argument is at most 0.5 here.
        const double z = (1.0 - size) / 2;
        const double sine = std::sqrt(z);
        const double half = sine + sine * z * arc_sine_series(z);
        angle = value > 0 ? 2 * half : kPi - 2 * half;
    }
    const float narrowed = static_cast<float>(angle - angle * kMaxRelativeError);
    if (narrowed == static_cast<float>(angle + angle * kMaxRelativeError)) {
        return narrowed;
    }
    // Either the error bound spans a rounding boundary or x is NaN, so the exact function decides.
    return static_cast<float>(std::acos(value));
}
