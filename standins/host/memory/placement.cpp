#include "standins/host/memory/placement.h"

#include <cmath>

namespace memhost {
namespace {

struct SineCosine {
    float sine;
    float cosine;
};

// The power series of the sine (`first` is the angle, `power` is 3) or the cosine (`first` is 1,
// `power` is 2). `power` is the exponent of the second term. For angles of up to an eighth of a
// turn, twelve terms exceed the precision of a double.
double power_series(double first, double angle, int power) {
    double sum = first;
    double term = first;
    for (int i = 0; i < 12; ++i, power += 2) {
        term *= -angle * angle / (power * (power - 1.0));
        sum += term;
    }
    return sum;
}

SineCosine sine_cosine(double degrees) {
    // Quarter turns only exchange sine and cosine, which is exact. The angle that is left is small.
    const double quarters = std::floor(degrees / 90.0 + 0.5);
    const double angle = (degrees - quarters * 90.0) * (3.14159265358979323846 / 180.0);
    const float sine = static_cast<float>(power_series(angle, angle, 3));
    const float cosine = static_cast<float>(power_series(1.0, angle, 2));
    switch (static_cast<int>(std::fmod(quarters, 4.0) + 4.0) % 4) {
        case 0:
            return {sine, cosine};
        case 1:
            return {cosine, 0.0f - sine};
        case 2:
            return {0.0f - sine, 0.0f - cosine};
        default:
            return {0.0f - cosine, sine};
    }
}

}  // namespace

Matrix3 translation(float x, float y, float z) {
    return Matrix3({1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {x, y, z});
}

Matrix3 scaling(float x, float y, float z) {
    return Matrix3({x, 0, 0}, {0, y, 0}, {0, 0, z}, {0, 0, 0});
}

Matrix3 rotation_x(double degrees) {
    const auto [sine, cosine] = sine_cosine(degrees);
    return Matrix3({1, 0, 0}, {0, cosine, sine}, {0, 0.0f - sine, cosine}, {0, 0, 0});
}

Matrix3 rotation_y(double degrees) {
    const auto [sine, cosine] = sine_cosine(degrees);
    return Matrix3({cosine, 0, 0.0f - sine}, {0, 1, 0}, {sine, 0, cosine}, {0, 0, 0});
}

Matrix3 rotation_z(double degrees) {
    const auto [sine, cosine] = sine_cosine(degrees);
    return Matrix3({cosine, sine, 0}, {0.0f - sine, cosine, 0}, {0, 0, 1}, {0, 0, 0});
}

}  // namespace memhost
