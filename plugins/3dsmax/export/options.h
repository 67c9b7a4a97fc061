#pragma once

#include <array>
#include <cstddef>

#include "plugins/3dsmax/export/host.h"
#include "plugins/3dsmax/export/option_keys.h"

namespace Qor {

/// Characters in a buffer for the path of the settings file, including the null terminator.
constexpr std::size_t kSettingsPathSize = 260;

/// What the user wants to export. One object lasts as long as the host runs: the commands share it,
/// and conversions read it directly.
///
/// The flags are kept in a settings file (option_keys.h), which is read once and written when the
/// user confirms the dialog. The radius multiplier isn't kept: it is 1 when the host starts.
class Options {
public:
    /// Borrows `host`, and loads the settings.
    explicit Options(Interface* host);

    /// Settings that the file lacks get their initial values. Always returns 0: a missing file
    /// isn't a failure.
    int Load();
    void Save() const;

    /// Writes the path to `out`, which has room for `kSettingsPathSize` characters. The path is
    /// empty if it doesn't fit; nothing is read or written then.
    void GetSettingsPath(wchar_t* out) const;

    /// Lets the user edit the settings, and saves them. False if the user cancels. Defined in the
    /// plug-in's shell, not in the export core.
    bool ShowDialog();

    bool HairAndFur = true;      ///< hair becomes curves
    bool GeneralCurves = false;  ///< shapes that aren't hair
    bool PhotometricLights = true;
    bool SkyLights = true;
    bool Bones = true;                ///< bone objects, as plain meshes
    bool TransformAnimations = true;  ///< motion of nodes
    bool CameraAnimations = true;     ///< motion of cameras
    bool Deformable = true;           ///< deforming meshes, captured frame by frame
    bool cameras = true;
    bool Layers = false;  ///< export by layers, not by the node tree
    float CurveRadiusMultiplier = 1.0f;
    Interface* host;
};

/// The field of each of `kOptionKeys`, in the order of the keys.
constexpr std::array<bool Options::*, kOptionKeys.size()> kOptionFields = {
    &Options::HairAndFur,       &Options::GeneralCurves, &Options::PhotometricLights,
    &Options::SkyLights,        &Options::Bones,         &Options::TransformAnimations,
    &Options::CameraAnimations, &Options::Deformable,    &Options::cameras,
    &Options::Layers,
};

}  // namespace Qor
