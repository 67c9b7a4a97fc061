#pragma once

#include <string>

#include "tools/vsqexport/animation_files.h"

namespace vsqexport {

/// What an export tells its user.
struct ExportReport {
    std::string summary;   ///< a line with file, size and time, and one with what is in it
    std::string brief;     ///< "3 objects, 1 camera, 7 matrices of nodes"
    std::string warnings;  ///< lines, or empty if there is nothing to be told
};

/// Reads a written scene file back, and the mesh files that it refers to. `path` is UTF-8 and names
/// a file; `seconds` is what the export took. Throws `std::runtime_error` with one line if one of
/// them is missing or malformed: of a mesh file the plug-in itself doesn't tell.
ExportReport report_on_file(const std::string& path, double seconds);

/// The same for the files of an animation, one for each frame from 0 to `last_frame`, and their
/// script.
ExportReport report_on_animation(const AnimationFiles& files, int last_frame, double seconds);

/// True if `path` can be read back: a file, not a device or a pipe.
bool can_be_read_back(const std::string& path);

}  // namespace vsqexport
