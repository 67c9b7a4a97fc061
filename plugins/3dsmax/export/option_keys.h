#pragma once

#include <array>

// The settings as they stand in their file. The plug-in shares this table with programs that change
// the file without it, so nothing of the host stands here.

namespace Qor {

/// The name of the file in the host's folder for the settings of plug-ins.
constexpr char kSettingsFile[] = "velmoraexport7.ini";

/// A setting that is kept from one start of the host to the next, as "1" or "0". All is ASCII.
struct OptionKey {
    const char* section;
    const char* key;
    bool initially;  ///< the value if the file has no such key
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
