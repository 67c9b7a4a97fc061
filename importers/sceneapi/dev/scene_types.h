#pragma once

#include <cstdint>

/// Red, green, blue.
struct qorColor {
    float r, g, b;
};

struct qorVector {
    double x, y, z;
};

/// Four rows of four, for row vectors: the translation is the fourth row.
struct qorMatrix {
    double m[4][4];
};

/// Elements that are read during a call and not kept. The code that goes with it tells their type;
/// without elements `data` is not touched.
struct qorArray {
    const void* data;
    std::uint32_t count;
};

/// The text of a finished shader. The back end that gave it owns it, and it stays valid until that
/// back end goes.
using qorShaderHandle = const void*;
