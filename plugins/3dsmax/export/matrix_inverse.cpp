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
    if (!IsFinite(inverse)) {
        return false;
    }
    for (int i = 0; i < 3; ++i) {
        const Point3 row = inverse.GetRow(i);
        if (row.x == 0.0f && row.y == 0.0f && row.z == 0.0f) {
            return false;
        }
    }
    return true;
}

}  // namespace

// Doubles hold the sum of a few finite floats, so only NaN or an infinity makes it not finite. One
// question is faster than twelve, and every node's matrix is asked.
bool IsFinite(const Matrix3& matrix) {
    double sum = 0;
    for (int i = 0; i < 4; ++i) {
        const Point3 row = matrix.GetRow(i);
        sum += static_cast<double>(row.x) + static_cast<double>(row.y) + static_cast<double>(row.z);
    }
    return std::isfinite(sum);
}

Matrix3 InverseOrIdentity(const Matrix3& matrix) {
    return InverseOrIdentity(matrix, {}, "");
}

Matrix3 InverseOrIdentity(const Matrix3& matrix, const NodeNotes& notes, const char* whose) {
    const double determinant = Determinant(matrix);
    if (determinant != 0.0 && std::isfinite(determinant)) {
        const Matrix3 inverse = Inverse(matrix);
        if (IsUsable(inverse)) {
            return inverse;
        }
    }
    if (notes) {
        notes.add(Note::kMatrixWithoutInverse, whose);
    }
    return Matrix3();
}
