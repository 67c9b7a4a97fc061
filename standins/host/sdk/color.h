#pragma once

/// A colour; the components of a material's lie between 0 and 1 unless the user overdoes it.
class Color {
public:
    float r = 0;
    float g = 0;
    float b = 0;

    constexpr Color() = default;
    constexpr Color(float red, float green, float blue) : r(red), g(green), b(blue) {}

    Color operator*(float factor) const { return {r * factor, g * factor, b * factor}; }
};
