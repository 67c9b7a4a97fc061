#pragma once

#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <string>

namespace platform {

/// Returns the path with "/" in place of "\\", which the host's folders and a registry file made on
/// Windows use. The path stays unchanged if it exists as given, or if the folder of the converted
/// path doesn't exist.
inline std::string native_path(const std::string& path) {
    const auto exists = [](const std::string& name) { return access(name.c_str(), F_OK) == 0; };
    if (exists(path)) {
        return path;
    }
    std::string native = path;
    // If the part up to the last "/" exists, any "\\" in it belongs to a name and stays.
    const std::size_t slash = path.rfind('/') + 1;  // 0 without one
    const std::size_t tail = exists(path.substr(0, slash)) ? slash : 0;
    std::replace(native.begin() + static_cast<std::ptrdiff_t>(tail), native.end(), '\\', '/');
    const std::size_t folder = native.rfind('/');
    return folder == std::string::npos || exists(native.substr(0, folder + 1)) ? native : path;
}

}  // namespace platform
