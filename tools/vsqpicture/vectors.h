#pragma once

#include <array>
#include <cmath>
#include <cstddef>

#include "tools/vsqinfo/vsq_listener.h"

namespace vsqpicture {

/// A point, direction, normal or linear colour.
struct Vec3 {
    float x = 0;
    float y = 0;
    float z = 0;

    friend Vec3 operator+(Vec3 a, Vec3 b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
    friend Vec3 operator-(Vec3 a, Vec3 b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
    friend Vec3 operator*(Vec3 a, Vec3 b) { return {a.x * b.x, a.y * b.y, a.z * b.z}; }
    friend Vec3 operator*(Vec3 a, float s) { return {a.x * s, a.y * s, a.z * s}; }
    friend Vec3 operator-(Vec3 a) { return {-a.x, -a.y, -a.z}; }
    Vec3& operator+=(Vec3 other) { return *this = *this + other; }
};

inline float dot(Vec3 a, Vec3 b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

inline Vec3 cross(Vec3 a, Vec3 b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

inline float length(Vec3 v) {
    return std::sqrt(dot(v, v));
}

/// A vector without a length stays as it is.
inline Vec3 normalized(Vec3 v) {
    const float size = length(v);
    return size > 0 ? v * (1 / size) : v;
}

inline float largest(Vec3 v) {
    return std::fmax(v.x, std::fmax(v.y, v.z));
}

/// Perceived brightness of a linear colour.
inline float luminance(Vec3 colour) {
    return dot(colour, {0.2126f, 0.7152f, 0.0722f});
}

using Matrix = vsqinfo::VsqMatrix;

inline constexpr Matrix kIdentity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

/// The matrix that does `first` and then `second`, for row vectors.
inline Matrix combined(const Matrix& first, const Matrix& second) {
    Matrix product{};
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            for (std::size_t i = 0; i < 4; ++i) {
                product[4 * row + column] += first[4 * row + i] * second[4 * i + column];
            }
        }
    }
    return product;
}

inline Vec3 transformed_direction(const Matrix& m, Vec3 v) {
    return {static_cast<float>(v.x * m[0] + v.y * m[4] + v.z * m[8]),
            static_cast<float>(v.x * m[1] + v.y * m[5] + v.z * m[9]),
            static_cast<float>(v.x * m[2] + v.y * m[6] + v.z * m[10])};
}

inline Vec3 transformed_point(const Matrix& m, Vec3 v) {
    return {static_cast<float>(v.x * m[0] + v.y * m[4] + v.z * m[8] + m[12]),
            static_cast<float>(v.x * m[1] + v.y * m[5] + v.z * m[9] + m[13]),
            static_cast<float>(v.x * m[2] + v.y * m[6] + v.z * m[10] + m[14])};
}

/// The matrix that turns normals as `m` turns surfaces, up to a positive factor: a normal stays on
/// its side of the surface, also under a mirroring `m`.
inline Matrix normal_matrix(const Matrix& m) {
    Matrix cofactors{};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            const std::size_t r1 = (row + 1) % 3, r2 = (row + 2) % 3;
            const std::size_t c1 = (column + 1) % 3, c2 = (column + 2) % 3;
            cofactors[4 * row + column] =
                m[4 * r1 + c1] * m[4 * r2 + c2] - m[4 * r1 + c2] * m[4 * r2 + c1];
        }
    }
    const double determinant = m[0] * cofactors[0] + m[1] * cofactors[1] + m[2] * cofactors[2];
    if (determinant < 0) {
        for (double& number : cofactors) {
            number = -number;
        }
    }
    return cofactors;
}

}  // namespace vsqpicture
