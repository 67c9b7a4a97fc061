#pragma once

#include <array>

// The layout of the settings file, for the plug-in and for other programs that change the file.

namespace Qor {

/// The file is in the host's folder for plug-in settings.
constexpr char kSettingsFile[] = "velmoraexport7.ini";

/// A setting that is kept between runs of the host, stored as "1" or "0". All names are ASCII.
struct OptionKey {
    const char* section;
    const char* key;
    bool initially;  ///< the value if the file has no such key
};

/// All settings, in the order in which they are loaded and saved.
constexpr std::array<OptionKey, 10> kOptionKeys = {{
    {"Curves", "HairAndFur", true},
    {"Curves", "GeneralCurves", false},
    {"Lights", "PhotometricLights", true},
    {"Lights", "SkyLights", true},
    {"Animation", "Bones", true},
    {"Animation", "TransformAnimations", true},
    {"Animation", "CameraAnimations", true},
    {"Animation", "Deformable", true},
    {"General", "cameras", true},
    {"General", "Layers", false},
}};

}  // namespace Qor
