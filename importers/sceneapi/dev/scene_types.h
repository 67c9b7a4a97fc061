#pragma once

#include <cstdint>

/// Red, green, blue.
struct qorColor {
    float r, g, b;
};

struct qorVector {
    double x, y, z;
};

/// Four rows of four numbers, for row vectors: the fourth row is the translation.
struct qorMatrix {
    double m[4][4];
};

/// An array that is only read during a call. The parameter code that is passed with it determines
/// the type of the elements. If `count` is 0, `data` isn't used.
struct qorArray {
    const void* data;
    std::uint32_t count;
};

/// Refers to a finished shader. The back end that returned the handle owns the shader, and the
/// handle is valid as long as that back end lives.
using qorShaderHandle = const void*;
