#pragma once

#include "plugins/3dsmax/export/options.h"
#include "plugins/3dsmax/shell/resources.h"

/// A control of the settings dialog that changes a setting.
struct OptionControl {
    int id;
    const char* text;
    bool Qor::Options::*field;  ///< null for the trackbar of the curve radius multiplier
};

/// All of them, in the order in which a confirmed dialog applies them. `SkyLights` has none.
constexpr OptionControl kOptionControls[] = {
    {IDC_HAIR_AND_FUR, TEXT_HAIR_AND_FUR, &Qor::Options::HairAndFur},
    {IDC_GENERAL_CURVES, TEXT_GENERAL_CURVES, &Qor::Options::GeneralCurves},
    {IDC_RADIUS_TRACKBAR, TEXT_RADIUS, nullptr},
    {IDC_PHOTOMETRIC_LIGHTS, TEXT_PHOTOMETRIC_LIGHTS, &Qor::Options::PhotometricLights},
    {IDC_BONES, TEXT_BONES, &Qor::Options::Bones},
    {IDC_TRANSFORM_ANIMATIONS, TEXT_TRANSFORM_ANIMATIONS, &Qor::Options::TransformAnimations},
    {IDC_CAMERA_ANIMATIONS, TEXT_CAMERA_ANIMATIONS, &Qor::Options::CameraAnimations},
    {IDC_DEFORMABLE, TEXT_DEFORMABLE, &Qor::Options::Deformable},
    {IDC_CAMERAS, TEXT_CAMERAS, &Qor::Options::cameras},
    {IDC_LAYERS, TEXT_LAYERS, &Qor::Options::Layers},
};
