#include "plugins/3dsmax/export/arc_cosine.h"

#include <cmath>

namespace {

constexpr double kPi = 3.14159265358979323846;

// (asin(x) - x) / x^3 as a polynomial in z = x^2, from 0 to a half of x. It was fitted at Chebyshev
// points; its error is far below what is lost in rounding.
double arc_sine_series(double z) {
    constexpr double k[] = {0.16666666666666669,  0.07499999999998433,  0.04464285714635543,
                            0.030381944138531247, 0.02237217294214989,  0.017352392720869973,
                            0.013971212973552933, 0.011479177415184906, 0.01032281435018578,
                            0.005457506718640357, 0.017400879442694025, -0.014851887071247209,
                            0.02875785136742157};
    // In pairs, which don't wait for one another.
    const double z2 = z * z;
    const double z4 = z2 * z2;
    const double low = (k[0] + k[1] * z) + (k[2] + k[3] * z) * z2;
    const double middle = (k[4] + k[5] * z) + (k[6] + k[7] * z) * z2;
    const double high = (k[8] + k[9] * z) + (k[10] + k[11] * z) * z2 + k[12] * z4;
    return low + (middle + high * z4) * z4;
}

}  // namespace

float NarrowedArcCosine(float x) {
    // Beyond this part of itself the result here is never wrong, by a wide margin.
    constexpr double kDoubt = 1e-13;

    const double value = static_cast<double>(x);
    const double size = std::fabs(value);
    double angle = 0;
    if (size <= 0.5) {
        const double z = value * value;
        angle = kPi / 2 - (value + value * z * arc_sine_series(z));
    } else {
        // The half angle, where the series holds.
        const double z = (1.0 - size) / 2;
        const double sine = std::sqrt(z);
        const double half = sine + sine * z * arc_sine_series(z);
        angle = value > 0 ? 2 * half : kPi - 2 * half;
    }
    const float narrowed = static_cast<float>(angle - angle * kDoubt);
    if (narrowed == static_cast<float>(angle + angle * kDoubt)) {
        return narrowed;
    }
    // So near the middle of two floats, or no number at all, the exact one has to say.
    return static_cast<float>(std::acos(value));
}
