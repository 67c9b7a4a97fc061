#include "model/black_body.h"

#include <cmath>

namespace qor {

const ColorMatching kColorMatching[kColorMatchingRows] = {
    {3.8e-07f, 0.0014f, 0.0000f, 0.0065f}, {3.9e-07f, 0.0042f, 0.0001f, 0.0201f},
    {4.0e-07f, 0.0143f, 0.0004f, 0.0679f}, {4.1e-07f, 0.0435f, 0.0012f, 0.2074f},
    {4.2e-07f, 0.1344f, 0.0040f, 0.6456f}, {4.3e-07f, 0.2839f, 0.0116f, 1.3856f},
    {4.4e-07f, 0.3483f, 0.0230f, 1.7471f}, {4.5e-07f, 0.3362f, 0.0380f, 1.7721f},
    {4.6e-07f, 0.2908f, 0.0600f, 1.6692f}, {4.7e-07f, 0.1954f, 0.0910f, 1.2876f},
    {4.8e-07f, 0.0956f, 0.1390f, 0.8130f}, {4.9e-07f, 0.0320f, 0.2080f, 0.4652f},
    {5.0e-07f, 0.0049f, 0.3230f, 0.2720f}, {5.1e-07f, 0.0093f, 0.5030f, 0.1582f},
    {5.2e-07f, 0.0633f, 0.7100f, 0.0782f}, {5.3e-07f, 0.1655f, 0.8620f, 0.0422f},
    {5.4e-07f, 0.2904f, 0.9540f, 0.0203f}, {5.5e-07f, 0.4334f, 0.9950f, 0.0087f},
    {5.6e-07f, 0.5945f, 0.9950f, 0.0039f}, {5.7e-07f, 0.7621f, 0.9520f, 0.0021f},
    {5.8e-07f, 0.9163f, 0.8700f, 0.0017f}, {5.9e-07f, 1.0263f, 0.7570f, 0.0011f},
    {6.0e-07f, 1.0622f, 0.6310f, 0.0008f}, {6.1e-07f, 1.0026f, 0.5030f, 0.0003f},
    {6.2e-07f, 0.8544f, 0.3810f, 0.0002f}, {6.3e-07f, 0.6424f, 0.2650f, 0.0000f},
    {6.4e-07f, 0.4479f, 0.1750f, 0.0000f}, {6.5e-07f, 0.2835f, 0.1070f, 0.0000f},
    {6.6e-07f, 0.1649f, 0.0610f, 0.0000f}, {6.7e-07f, 0.0874f, 0.0320f, 0.0000f},
    {6.8e-07f, 0.0468f, 0.0170f, 0.0000f}, {6.9e-07f, 0.0227f, 0.0082f, 0.0000f},
    {7.0e-07f, 0.0114f, 0.0041f, 0.0000f}, {7.1e-07f, 0.0058f, 0.0021f, 0.0000f},
    {7.2e-07f, 0.0029f, 0.0010f, 0.0000f}, {7.3e-07f, 0.0014f, 0.0005f, 0.0000f},
    {7.4e-07f, 0.0007f, 0.0002f, 0.0000f}, {7.5e-07f, 0.0003f, 0.0001f, 0.0000f},
    {7.6e-07f, 0.0002f, 0.0001f, 0.0000f}, {7.7e-07f, 0.0001f, 0.0000f, 0.0000f},
};

namespace {

// Applies the sRGB curve and limits the result to 1. NaN stays NaN.
float screen_component(float linear) {
    const float curved =
        linear > 0.0031308f ? 1.055f * std::pow(linear, 0.41666666f) - 0.055f : 12.92f * linear;
    return curved > 1.0f ? 1.0f : curved;
}

}  // namespace

float PlanckRadiance(float wavelength_m, float kelvin) {
    constexpr double kFirstRadiation = 3.741832e-16;  // W m^2
    constexpr double kSecondRadiation = 0.01438786;   // m K
    const float kelvin_metres = kelvin * wavelength_m;
    const double wavelength = static_cast<double>(wavelength_m);
    return static_cast<float>(
        kFirstRadiation * std::pow(wavelength, -5.0) /
        (std::exp(kSecondRadiation / static_cast<double>(kelvin_metres)) - 1.0));
}

Chromaticity BlackbodyChromaticity(float kelvin) {
    Chromaticity seen = {0, 0, 0};
    for (const ColorMatching& row : kColorMatching) {
        const float power = PlanckRadiance(row.wavelength_m, kelvin);
        seen.x += power * row.x;
        seen.y += power * row.y;
        seen.z += power * row.z;
    }
    const float sum = seen.x + seen.y + seen.z;
    if (sum > 0) {
        const float scale = 1.0f / sum;
        seen.x *= scale;
        seen.y *= scale;
        seen.z *= scale;
    }
    return seen;
}

qorColor BlackbodyColor(float kelvin) {
    const Chromaticity seen = BlackbodyChromaticity(kelvin);

    constexpr float kLuminance = 50.0f;  // percent
    const float x = seen.x * kLuminance / seen.y / 100.0f;
    const float y = kLuminance / 100.0f;
    const float z = (1.0f - seen.x - seen.y) * kLuminance / seen.y / 100.0f;

    return {screen_component(3.240479f * x - 1.53715f * y - 0.498535f * z),
            screen_component(-0.969256f * x + 1.875992f * y + 0.041556f * z),
            screen_component(0.055648f * x - 0.204043f * y + 1.057311f * z)};
}

}  // namespace qor
