#pragma once

#include <array>
#include <cstddef>

#include "plugins/3dsmax/export/host.h"
#include "plugins/3dsmax/export/option_keys.h"

namespace Qor {

/// The size of a buffer for the path of the settings file, with the zero at its end.
constexpr std::size_t kSettingsPathSize = 260;

/// What the user wants an export to take along. One object serves as long as the host runs: it is
/// shared by the commands and read directly by every conversion.
///
/// The flags are kept in a settings file of the host (option_keys.h), which is read once and
/// written when the user confirms the dialog. The radius multiplier starts anew with the host.
class Options {
public:
    /// Borrows `host`, and loads the settings.
    explicit Options(Interface* host);

    /// What the file doesn't hold becomes what it is at the first start. Always 0: that there is no
    /// file is no failure.
    int Load();
    void Save() const;

    /// Fills `out`, of `kSettingsPathSize` characters. The path is empty if it would not fit; then
    /// nothing is read and nothing written.
    void GetSettingsPath(wchar_t* out) const;

    /// Lets the user edit the settings, and saves them. False if the user cancels. The core leaves
    /// this operation to the plug-in's shell, which defines it.
    bool ShowDialog();

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

/// Which field each of `kOptionKeys` is loaded into and saved from, in the order of the keys.
constexpr std::array<bool Options::*, kOptionKeys.size()> kOptionFields = {
    &Options::HairAndFur,       &Options::GeneralCurves, &Options::PhotometricLights,
    &Options::SkyLights,        &Options::Bones,         &Options::TransformAnimations,
    &Options::CameraAnimations, &Options::Deformable,    &Options::cameras,
    &Options::Layers,
};

}  // namespace Qor
