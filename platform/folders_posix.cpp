#include <cstdlib>
#include <filesystem>

#include "platform/folders.h"

namespace platform {

std::string program_folder() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).parent_path().u8string();
}

std::string user_configuration_folder() {
    if (const char* config = std::getenv("XDG_CONFIG_HOME"); config != nullptr && *config != 0) {
        return std::string(config) + "/quoria";
    }
    const char* home = std::getenv("HOME");
    return std::string(home != nullptr ? home : "") + "/.config/quoria";
}

}  // namespace platform
