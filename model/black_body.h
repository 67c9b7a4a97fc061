#pragma once

#include "importers/sceneapi/dev/scene_types.h"

namespace qor {

/// How strongly the eye of the CIE 1931 standard observer, at an angle of 2 degrees, takes up light
/// of one wavelength in each of its three channels.
struct ColorMatching {
    float wavelength_m;
    float x, y, z;
};

/// Visible light in steps of 10 nm.
constexpr int kColorMatchingRows = 40;
extern const ColorMatching kColorMatching[kColorMatchingRows];

/// Where a colour lies in the CIE diagram: x + y + z is 1.
struct Chromaticity {
    float x, y, z;
};

/// The power that a black body radiates at a wavelength, by Planck's law: none at 0 kelvin, and a
/// negative one below that.
float PlanckRadiance(float wavelength_m, float kelvin);

/// The colour of the light of a black body. All zero if there is no light to be seen, and not
/// brought to a sum of 1 below 0 kelvin.
Chromaticity BlackbodyChromaticity(float kelvin);

/// The same in sRGB, with the curve of a screen applied, at half of the full luminance. At most 1;
/// below 0 for a colour that no screen shows, and NaN if there is no light to be seen.
qorColor BlackbodyColor(float kelvin);

}  // namespace qor
