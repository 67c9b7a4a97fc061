#pragma once

#include <cstdint>
#include <string>

namespace velmora {

/// A fault that the renderer simulates on each connection that has sent `after_bytes` bytes.
struct Fault {
    enum class Kind { kNone, kDie, kHang, kAnswerNonsense };

    Kind kind = Kind::kNone;
    std::uint64_t after_bytes = 0;
};

struct RendererSettings {
    int version_major = 11;
    int version_minor = 0;
    bool is_silent = false;
    Fault fault;
    std::string scene_folder;  ///< UTF-8; empty for the default folder
};

/// Help text on the variables that `settings_from_environment` reads.
extern const char kSettingsHelp[];

/// Throws `std::invalid_argument`, which names the variable, for a value that is not valid.
RendererSettings settings_from_environment();

}  // namespace velmora
