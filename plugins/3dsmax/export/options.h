#pragma once

#include <array>

#include "plugins/3dsmax/export/host.h"

namespace Qor {

/// What the user wants an export to take along. One object serves as long as the host runs: it is
/// shared by the commands and read directly by every conversion.
class Options {
public:
    /// Borrows `host`.
    explicit Options(Interface* host);

    bool HairAndFur = true;      ///< hair becomes curves
    bool GeneralCurves = false;  ///< shapes that aren't hair
    bool PhotometricLights = true;
    bool SkyLights = true;
    bool Bones = true;                ///< bone objects, as plain meshes
    bool TransformAnimations = true;  ///< moving nodes carry their motion
    bool CameraAnimations = true;     ///< and so do moving cameras
    bool Deformable = true;           ///< meshes that change their shape, frame by frame
    bool cameras = true;
    bool Layers = false;  ///< by layers in place of the node tree
    float CurveRadiusMultiplier = 1.0f;
    Interface* host;
};

/// A setting that is kept from one start of the host to the next.
struct OptionKey {
    const char* section;
    const char* key;
    bool Options::*field;
};

/// All of them, in the order in which they are loaded and saved.
constexpr std::array<OptionKey, 10> kOptionKeys = {{
    {"Curves", "HairAndFur", &Options::HairAndFur},
    {"Curves", "GeneralCurves", &Options::GeneralCurves},
    {"Lights", "PhotometricLights", &Options::PhotometricLights},
    {"Lights", "SkyLights", &Options::SkyLights},
    {"Animation", "Bones", &Options::Bones},
    {"Animation", "TransformAnimations", &Options::TransformAnimations},
    {"Animation", "CameraAnimations", &Options::CameraAnimations},
    {"Animation", "Deformable", &Options::Deformable},
    {"General", "cameras", &Options::cameras},
    {"General", "Layers", &Options::Layers},
}};

}  // namespace Qor
