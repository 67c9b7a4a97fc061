#pragma once

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>

namespace platform {

/// Opens a file whose path is UTF-8 on every system; the separator may be "\\" as well. Null on
/// failure, with the reason in `errno`. The caller closes it.
std::FILE* open_file(const std::string& path_utf8, const char* mode);

/// Closes the stream of an owner; whoever has to know whether that works closes it by hand.
struct CloseStream {
    void operator()(std::FILE* stream) const { std::fclose(stream); }
};

/// True if something, file or folder, has that path. The separator may be "\\" on every system, as
/// the host's own folders have it.
bool path_exists(const std::string& path_utf8);

/// True for a folder; the separator may be "\\" as well.
bool is_folder(const std::string& path_utf8);

/// Makes a folder in one that exists. False if that fails, also where it is there already.
bool create_folder(const std::string& path_utf8);

/// In bytes. Nothing if there is no such file.
std::optional<std::uint64_t> file_size(const std::string& path_utf8);

/// What stands between the parts of a path that is made here.
#ifdef _WIN32
constexpr char kSeparator = '\\';
#else
constexpr char kSeparator = '/';
#endif

/// A stream of its own on the process's standard output, for writing bytes. Null on failure, with
/// the reason in `errno`. The caller closes it.
std::FILE* duplicate_standard_output();

/// Sends whatever is printed on standard output from now on to standard error, so that it can't
/// get between the bytes of a stream from `duplicate_standard_output`. False on failure, with the
/// reason in `errno`.
bool redirect_standard_output_to_error();

/// Keeps the stream from translating line ends. False on failure, with the reason in `errno`.
bool set_binary_mode(std::FILE* stream);

}  // namespace platform
