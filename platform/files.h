#pragma once

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>

namespace platform {

/// Opens a file. The path is UTF-8 on every system and may use "\\" as the separator. Returns null
/// on failure, with the reason in `errno`. The caller closes the file.
std::FILE* open_file(const std::string& path_utf8, const char* mode);

/// The deleter of an owned stream. It ignores errors, so a caller that must know about them calls
/// `fclose` directly.
struct CloseStream {
    void operator()(std::FILE* stream) const { std::fclose(stream); }
};

/// True if the path is that of a file or a folder. It may use "\\" as the separator on every
/// system, because the host's own folders do.
bool path_exists(const std::string& path_utf8);

/// True if the path is that of a folder. It may use "\\" as the separator, too.
bool is_folder(const std::string& path_utf8);

/// Creates a folder whose parent must exist. False on failure, including if the folder already
/// exists.
bool create_folder(const std::string& path_utf8);

/// The size in bytes, or nullopt if there is no such file.
std::optional<std::uint64_t> file_size(const std::string& path_utf8);

/// The separator for paths that are put together here.
#ifdef _WIN32
constexpr char kSeparator = '\\';
#else
constexpr char kSeparator = '/';
#endif

/// Opens a second stream on the process's standard output, for writing bytes. Null on failure, with
/// the reason in `errno`. The caller closes it.
std::FILE* duplicate_standard_output();

/// Redirects standard output to standard error, so that nothing that is printed later gets between
/// the bytes of a stream from `duplicate_standard_output`. False on failure, with the reason in
/// `errno`.
bool redirect_standard_output_to_error();

/// Stops the stream from translating line ends. False on failure, with the reason in `errno`.
bool set_binary_mode(std::FILE* stream);

}  // namespace platform
