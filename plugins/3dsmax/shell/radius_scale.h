#pragma once

#include <string>

/// The trackbar of the curve radius multiplier: a logarithmic scale from about 0.1 at its lowest
/// position over 1 in the middle to 10 at its highest.
constexpr int kLowestRadiusPosition = 1;
constexpr int kMiddleRadiusPosition = 50;
constexpr int kHighestRadiusPosition = 100;

/// The multiplier at a position of the trackbar.
float RadiusMultiplierAt(int position);

/// How the dialog shows a multiplier: small ones with two decimals, others with one.
std::string RadiusLabel(float multiplier);
