#pragma once

#include <cstddef>

/// Replaces numbers from -1 to 1 by their arc cosines, in radians. Gives the same bits as
/// `static_cast<float>(std::acos(x))` for a double `x`.
void NarrowArcCosines(float* numbers, std::size_t count);
