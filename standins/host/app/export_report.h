#pragma once

#include <string>

namespace app {

/// Reads a written scene file back and gives what an export tells its user: one line with file,
/// size and time, and one with what is in it. Throws `std::runtime_error` if the file doesn't read
/// back as a scene.
struct ExportReport {
    std::string summary;   ///< lines, each with its line feed
    std::string warnings;  ///< the same, empty if there is nothing to be told
};

/// `path` is UTF-8 and names a file; `seconds` is what the export took.
ExportReport report_on_file(const std::string& path, double seconds);

/// True if `path` can be read back: a file, not a device or a pipe.
bool can_be_read_back(const std::string& path);

}  // namespace app
