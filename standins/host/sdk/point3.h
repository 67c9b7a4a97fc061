#pragma once

#include <cmath>

/// A point, a vector or a row of a matrix.
class Point3 {
public:
    float x = 0;
    float y = 0;
    float z = 0;

    constexpr Point3() = default;
    constexpr Point3(float x_value, float y_value, float z_value)
        : x(x_value), y(y_value), z(z_value) {}

    float& operator[](int i) { return i == 0 ? x : i == 1 ? y : z; }
    const float& operator[](int i) const { return i == 0 ? x : i == 1 ? y : z; }

    Point3 operator-() const { return {-x, -y, -z}; }
    Point3 operator+(const Point3& b) const { return {x + b.x, y + b.y, z + b.z}; }
    Point3 operator-(const Point3& b) const { return {x - b.x, y - b.y, z - b.z}; }
    Point3 operator*(float factor) const { return {x * factor, y * factor, z * factor}; }
    Point3 operator/(float divisor) const { return {x / divisor, y / divisor, z / divisor}; }
    Point3& operator+=(const Point3& b) { return *this = *this + b; }

    /// The dot product. Put `%` and `^` in brackets: they have the precedence of the built-in
    /// operators.
    float operator%(const Point3& b) const { return x * b.x + y * b.y + z * b.z; }
    /// The cross product.
    Point3 operator^(const Point3& b) const {
        return {y * b.z - z * b.y, z * b.x - x * b.z, x * b.y - y * b.x};
    }

    float LengthSquared() const { return *this % *this; }
    float Length() const { return std::sqrt(LengthSquared()); }

    /// A zero vector stays as it is.
    Point3 Normalize() const {
        const float length = Length();
        return length == 0 ? *this : *this / length;
    }
};

inline float DotProd(const Point3& a, const Point3& b) {
    return a % b;
}
inline Point3 CrossProd(const Point3& a, const Point3& b) {
    return a ^ b;
}
inline float Length(const Point3& v) {
    return v.Length();
}
inline Point3 Normalize(const Point3& v) {
    return v.Normalize();
}
