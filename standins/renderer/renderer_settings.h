#pragma once

#include <cstdint>
#include <string>

namespace velmora {

/// What the renderer does wrong on purpose, on every connection that has sent so many bytes.
struct Fault {
    enum class Kind { kNone, kDie, kHang };

    Kind kind = Kind::kNone;
    std::uint64_t after_bytes = 0;
};

struct RendererSettings {
    int version_major = 11;
    int version_minor = 0;
    bool is_silent = false;
    Fault fault;
    std::string scene_folder;  ///< UTF-8; empty for the default one
};

/// What `settings_from_environment` understands, for the user to read.
extern const char kSettingsHelp[];

/// Throws `std::invalid_argument` that names the variable for a value that means nothing.
RendererSettings settings_from_environment();

}  // namespace velmora
