#include "model/euler_matrix.h"

#include <cmath>

namespace qor {

namespace {

constexpr double kRadiansPerDegree = 0.017453292519943295;

qorMatrix product(const qorMatrix& left, const qorMatrix& right) {
    qorMatrix result = {};
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            for (int i = 0; i < 4; ++i) {
                result.m[row][column] += left.m[row][i] * right.m[i][column];
            }
        }
    }
    return result;
}

}  // namespace

qorMatrix EulerMatrix(double x_degrees, double y_degrees, double z_degrees) {
    const double x = x_degrees * kRadiansPerDegree;
    const double y = y_degrees * kRadiansPerDegree;
    const double z = z_degrees * kRadiansPerDegree;
    const double cx = std::cos(x), sx = std::sin(x);
    const double cy = std::cos(y), sy = std::sin(y);
    const double cz = std::cos(z), sz = std::sin(z);
    const qorMatrix identity = {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};
    const qorMatrix rx = {{{1, 0, 0, 0}, {0, cx, sx, 0}, {0, -sx, cx, 0}, {0, 0, 0, 1}}};
    const qorMatrix ry = {{{cy, 0, -sy, 0}, {0, 1, 0, 0}, {sy, 0, cy, 0}, {0, 0, 0, 1}}};
    const qorMatrix rz = {{{cz, sz, 0, 0}, {-sz, cz, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};
    return product(product(product(identity, rx), ry), rz);
}

}  // namespace qor
