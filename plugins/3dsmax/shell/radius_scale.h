#pragma once

#include <string>

/// The trackbar of the curve radius multiplier. Its scale is logarithmic: about 0.1 at the lowest
/// position, 1 in the middle and 10 at the highest.
constexpr int kLowestRadiusPosition = 1;
constexpr int kMiddleRadiusPosition = 50;
constexpr int kHighestRadiusPosition = 100;

/// The multiplier at a position of the trackbar.
float RadiusMultiplierAt(int position);

/// How the dialog shows a multiplier: with two decimals below 0.5, otherwise with one.
std::string RadiusLabel(float multiplier);
