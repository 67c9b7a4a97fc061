#include "platform/files.h"

#include <unistd.h>

#include <algorithm>

namespace platform {

std::FILE* open_file(const std::string& path_utf8, const char* mode) {
    return std::fopen(path_utf8.c_str(), mode);
}

bool path_exists(const std::string& path_utf8) {
    if (access(path_utf8.c_str(), F_OK) == 0) {
        return true;
    }
    std::string native = path_utf8;
    std::replace(native.begin(), native.end(), '\\', '/');
    return native != path_utf8 && access(native.c_str(), F_OK) == 0;
}

std::FILE* duplicate_standard_output() {
    const int descriptor = dup(STDOUT_FILENO);
    std::FILE* stream = descriptor < 0 ? nullptr : fdopen(descriptor, "wb");
    if (stream == nullptr && descriptor >= 0) {
        close(descriptor);
    }
    return stream;
}

bool redirect_standard_output_to_error() {
    std::fflush(stdout);
    return dup2(STDERR_FILENO, STDOUT_FILENO) >= 0;
}

// Nothing is translated here anyway.
bool set_binary_mode(std::FILE*) {
    return true;
}

}  // namespace platform
