#pragma once

#include <array>

// How the settings stand in their file, for the plug-in and for whoever changes that file without
// it.

namespace Qor {

/// It lies in the host's folder for the settings of plug-ins.
constexpr char kSettingsFile[] = "velmoraexport7.ini";

/// A setting that is kept from one start of the host to the next, as "1" or "0". All is ASCII.
struct OptionKey {
    const char* section;
    const char* key;
    bool initially;  ///< holds where the file has no such key
};

/// All of them, in the order in which they are loaded and saved.
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
