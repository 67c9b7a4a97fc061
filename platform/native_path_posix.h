#pragma once

#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <string>

namespace platform {

/// The path with "/" for "\\", as the host's folders and a registry made on Windows have it. It
/// stays as it is if something has that very name, or if the other form leads into no folder.
inline std::string native_path(const std::string& path) {
    const auto exists = [](const std::string& name) { return access(name.c_str(), F_OK) == 0; };
    if (exists(path)) {
        return path;
    }
    std::string native = path;
    // A folder in front that exists keeps its name.
    const std::size_t slash = path.rfind('/') + 1;  // 0 without one
    const std::size_t tail = exists(path.substr(0, slash)) ? slash : 0;
    std::replace(native.begin() + static_cast<std::ptrdiff_t>(tail), native.end(), '\\', '/');
    const std::size_t folder = native.rfind('/');
    return folder == std::string::npos || exists(native.substr(0, folder + 1)) ? native : path;
}

}  // namespace platform
