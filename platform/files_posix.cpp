#include "platform/files.h"

#include <sys/stat.h>
#include <unistd.h>

#include "platform/native_path_posix.h"

namespace platform {

std::FILE* open_file(const std::string& path_utf8, const char* mode) {
    return std::fopen(native_path(path_utf8).c_str(), mode);
}

bool path_exists(const std::string& path_utf8) {
    return access(native_path(path_utf8).c_str(), F_OK) == 0;
}

bool is_folder(const std::string& path_utf8) {
    struct stat status {};
    return stat(native_path(path_utf8).c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool create_folder(const std::string& path_utf8) {
    return mkdir(native_path(path_utf8).c_str(), 0777) == 0;
}

std::optional<std::uint64_t> file_size(const std::string& path_utf8) {
    struct stat status {};
    if (stat(native_path(path_utf8).c_str(), &status) != 0) {
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

// Streams never translate line ends on this system.
bool set_binary_mode(std::FILE*) {
    return true;
}

}  // namespace platform
