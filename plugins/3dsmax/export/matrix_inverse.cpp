#include "plugins/3dsmax/export/matrix_inverse.h"

#include <cmath>

namespace {

// In double precision, since the product of three small floats can underflow to 0.
double Determinant(const Matrix3& matrix) {
    const Point3 a = matrix.GetRow(0);
    const Point3 b = matrix.GetRow(1);
    const Point3 c = matrix.GetRow(2);
    const auto minor_of = [](float p, float q, float r, float s) {
        return static_cast<double>(p) * static_cast<double>(s) -
               static_cast<double>(q) * static_cast<double>(r);
    };
    return static_cast<double>(a.x) * minor_of(b.y, b.z, c.y, c.z) +
           static_cast<double>(a.y) * minor_of(b.z, b.x, c.z, c.x) +
           static_cast<double>(a.z) * minor_of(b.x, b.y, c.x, c.y);
}

// True if all numbers are finite and no axis has length 0.
bool IsUsable(const Matrix3& inverse) {
    for (int i = 0; i < 4; ++i) {
        const Point3 row = inverse.GetRow(i);
        if (!std::isfinite(row.x) || !std::isfinite(row.y) || !std::isfinite(row.z)) {
            return false;
        }
        if (i < 3 && row.x == 0.0f && row.y == 0.0f && row.z == 0.0f) {
            return false;
        }
    }
    return true;
}

}  // namespace

Matrix3 InverseOrIdentity(const Matrix3& matrix) {
    const double determinant = Determinant(matrix);
    if (determinant == 0.0 || !std::isfinite(determinant)) {
        return Matrix3();
    }
    const Matrix3 inverse = Inverse(matrix);
    return IsUsable(inverse) ? inverse : Matrix3();
}
