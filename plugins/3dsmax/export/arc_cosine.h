#pragma once

/// The arc cosine, in radians, of a number from -1 to 1. Gives the same bits as
/// `static_cast<float>(std::acos(x))` for a double `x`, in a third of the time.
float NarrowedArcCosine(float x);
