#pragma once

#include <string>

namespace app {

/// What an export tells its user.
struct ExportReport {
    std::string summary;   ///< a line with file, size and time, and one with what is in it
    std::string brief;     ///< "3 objects, 1 camera, 7 matrices of nodes"
    std::string warnings;  ///< lines, or empty if there is nothing to be told
};

/// Reads a written scene file back. `path` is UTF-8 and names a file; `seconds` is what the export
/// took. Throws `std::runtime_error` if the file doesn't read back as a scene.
ExportReport report_on_file(const std::string& path, double seconds);

/// True if `path` can be read back: a file, not a device or a pipe.
bool can_be_read_back(const std::string& path);

}  // namespace app
