#include "platform/files.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

namespace platform {

namespace {

std::string with_own_separators(std::string path) {
    std::replace(path.begin(), path.end(), '\\', kSeparator);
    return path;
}

}  // namespace

std::FILE* open_file(const std::string& path_utf8, const char* mode) {
    std::FILE* file = std::fopen(path_utf8.c_str(), mode);
    const std::string native = with_own_separators(path_utf8);
    return file != nullptr || native == path_utf8 ? file : std::fopen(native.c_str(), mode);
}

bool path_exists(const std::string& path_utf8) {
    if (access(path_utf8.c_str(), F_OK) == 0) {
        return true;
    }
    const std::string native = with_own_separators(path_utf8);
    return native != path_utf8 && access(native.c_str(), F_OK) == 0;
}

bool is_folder(const std::string& path_utf8) {
    struct stat status {};
    return stat(with_own_separators(path_utf8).c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool create_folder(const std::string& path_utf8) {
    return mkdir(with_own_separators(path_utf8).c_str(), 0777) == 0;
}

std::optional<std::uint64_t> file_size(const std::string& path_utf8) {
    struct stat status {};
    if (stat(path_utf8.c_str(), &status) != 0) {
        return std::nullopt;
    }
    return static_cast<std::uint64_t>(status.st_size);
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
