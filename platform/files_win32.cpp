#include "platform/files.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cerrno>

#include "platform/wide_text.h"

namespace platform {

std::FILE* open_file(const std::string& path_utf8, const char* mode) {
    return _wfopen(wide_from_utf8(path_utf8).c_str(), wide_from_utf8(mode).c_str());
}

bool path_exists(const std::string& path_utf8) {
    return _waccess(wide_from_utf8(path_utf8).c_str(), 0) == 0;
}

bool is_folder(const std::string& path_utf8) {
    const DWORD attributes = GetFileAttributesW(wide_from_utf8(path_utf8).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool create_folder(const std::string& path_utf8) {
    return CreateDirectoryW(wide_from_utf8(path_utf8).c_str(), nullptr) != 0;
}

std::optional<std::uint64_t> file_size(const std::string& path_utf8) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(wide_from_utf8(path_utf8).c_str(), GetFileExInfoStandard, &data)) {
        return std::nullopt;
    }
    return (static_cast<std::uint64_t>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
}

std::FILE* duplicate_standard_output() {
    // A program without a console may have no standard output, and the C runtime ends a program
    // that duplicates a descriptor that isn't open.
    if (_fileno(stdout) < 0) {
        errno = EBADF;
        return nullptr;
    }
    const int descriptor = _dup(_fileno(stdout));
    std::FILE* stream = descriptor < 0 ? nullptr : _fdopen(descriptor, "wb");
    if (stream == nullptr && descriptor >= 0) {
        _close(descriptor);
    }
    return stream;
}

bool redirect_standard_output_to_error() {
    if (_fileno(stdout) < 0 || _fileno(stderr) < 0) {
        errno = EBADF;
        return false;
    }
    std::fflush(stdout);
    return _dup2(_fileno(stderr), _fileno(stdout)) == 0;
}

bool set_binary_mode(std::FILE* stream) {
    return _setmode(_fileno(stream), _O_BINARY) != -1;
}

}  // namespace platform
