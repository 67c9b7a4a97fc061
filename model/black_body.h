#pragma once

#include "importers/sceneapi/dev/scene_types.h"

namespace qor {

/// The colour matching functions of the CIE 1931 standard observer (2 degrees) at one wavelength.
struct ColorMatching {
    float wavelength_m;
    float x, y, z;
};

/// One row for each 10 nm of the visible spectrum.
constexpr int kColorMatchingRows = 40;
extern const ColorMatching kColorMatching[kColorMatchingRows];

/// CIE chromaticity coordinates: x + y + z is 1.
struct Chromaticity {
    float x, y, z;
};

/// The power that a black body radiates at a wavelength, by Planck's law, in W/m^3. It is 0 at 0
/// kelvin and negative below that.
float PlanckRadiance(float wavelength_m, float kelvin);

/// The colour of a black body's light. All zero if it emits no visible light; below 0 kelvin, the
/// sum is not 1.
Chromaticity BlackbodyChromaticity(float kelvin);

/// The same colour in sRGB, with the sRGB curve applied, at half of full luminance. Components are
/// at most 1. They are negative for a colour that no screen can show, and NaN if there is no
/// visible light.
qorColor BlackbodyColor(float kelvin);

}  // namespace qor
