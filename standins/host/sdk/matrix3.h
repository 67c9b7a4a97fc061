#pragma once

#include <array>
#include <cmath>
#include <cstddef>

#include "standins/host/sdk/point3.h"

/// An affine transform of row vectors: four rows of three numbers, the last one the translation.
/// The fourth column is always 0, 0, 0, 1 and isn't stored. `a * b` applies `a` first.
class Matrix3 {
public:
    /// The identity.
    Matrix3() { IdentityMatrix(); }
    Matrix3(const Point3& u, const Point3& v, const Point3& n, const Point3& t)
        : rows_{u, v, n, t} {}

    void IdentityMatrix() { *this = Matrix3({1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 0}); }
    void Zero() { *this = Matrix3({}, {}, {}, {}); }

    Point3 GetRow(int i) const { return rows_[i]; }
    void SetRow(int i, Point3 row) { rows_[i] = row; }
    Point3 GetTrans() const { return rows_[3]; }

    /// Ignores the translation.
    Point3 VectorTransform(const Point3& v) const {
        // Each sum runs from left to right, so that every system rounds it in the same way.
        return {v.x * rows_[0].x + v.y * rows_[1].x + v.z * rows_[2].x,
                v.x * rows_[0].y + v.y * rows_[1].y + v.z * rows_[2].y,
                v.x * rows_[0].z + v.y * rows_[1].z + v.z * rows_[2].z};
    }

    Matrix3 operator*(const Matrix3& b) const {
        return Matrix3(b.VectorTransform(rows_[0]), b.VectorTransform(rows_[1]),
                       b.VectorTransform(rows_[2]), b.VectorTransform(rows_[3]) + b.rows_[3]);
    }
    Matrix3& operator*=(const Matrix3& b) { return *this = *this * b; }

    /// Removes shear: turns the second row perpendicular to the first and the third to both, and
    /// keeps the length of each. A row that depends linearly on those before it gets any direction
    /// that is left. Does nothing unless every row has a finite length.
    inline void Orthogonalize();

private:
    Point3 rows_[4];
};

/// Transforms a point, including the translation.
inline Point3 operator*(const Point3& p, const Matrix3& m) {
    return m.VectorTransform(p) + m.GetTrans();
}

/// `m` has no inverse if it is singular or has a number that isn't finite, or if a number of the
/// inverse doesn't fit in a float. Then nothing is certain about the result.
Matrix3 Inverse(const Matrix3& m);

inline void Matrix3::Orthogonalize() {
    // If less than this is left of a unit vector, it is only rounding error.
    constexpr double kLeastRest = 1e-6;
    using Vector = std::array<double, 3>;

    Vector directions[3];
    double lengths[3];
    for (int i = 0; i < 3; ++i) {
        const Point3 row = rows_[i];
        Vector& direction = directions[i];
        direction = {row.x, row.y, row.z};
        lengths[i] = std::sqrt(direction[0] * direction[0] + direction[1] * direction[1] +
                               direction[2] * direction[2]);
        if (!std::isfinite(lengths[i])) {
            return;
        }
        for (double& number : direction) {
            number = lengths[i] == 0.0 ? 0.0 : number / lengths[i];
        }
    }

    for (int i = 0; i < 3; ++i) {
        // The earlier rows span at most a plane, so at least one axis is far outside it.
        const Vector candidates[4] = {directions[i], {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
        for (const Vector& candidate : candidates) {
            Vector rest = candidate;
            for (int j = 0; j < i; ++j) {
                const Vector& other = directions[j];
                const double along = rest[0] * other[0] + rest[1] * other[1] + rest[2] * other[2];
                for (std::size_t k = 0; k < 3; ++k) {
                    rest[k] -= along * other[k];
                }
            }
            const double size =
                std::sqrt(rest[0] * rest[0] + rest[1] * rest[1] + rest[2] * rest[2]);
            if (size > kLeastRest) {
                directions[i] = {rest[0] / size, rest[1] / size, rest[2] / size};
                break;
            }
        }
        for (std::size_t k = 0; k < 3; ++k) {
            rows_[i][static_cast<int>(k)] = static_cast<float>(directions[i][k] * lengths[i]);
        }
    }
}
