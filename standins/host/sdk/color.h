#pragma once

/// A colour. The components of a material's colour are from 0 to 1 unless the user sets higher
/// values.
class Color {
public:
    float r = 0;
    float g = 0;
    float b = 0;

    constexpr Color() = default;
    constexpr Color(float red, float green, float blue) : r(red), g(green), b(blue) {}

    Color operator*(float factor) const { return {r * factor, g * factor, b * factor}; }
};
