#pragma once

/// The arc cosine of a number from -1 to 1, worked out in double precision and narrowed: the same
/// bits as `static_cast<float>(std::acos(x))` for a double `x`, in a third of the time.
float NarrowedArcCosine(float x);
