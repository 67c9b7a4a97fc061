#pragma once

#include <unistd.h>

#include <algorithm>
#include <string>

namespace platform {

/// The path as it is if something has it, or else with "/" for "\\": the host's folders and a
/// registry that was made on Windows have the latter.
inline std::string native_path(std::string path) {
    if (access(path.c_str(), F_OK) != 0) {
        std::replace(path.begin(), path.end(), '\\', '/');
    }
    return path;
}

}  // namespace platform
