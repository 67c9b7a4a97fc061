#pragma once

#include <string>

#include "tools/vsqexport/animation_files.h"

namespace vsqexport {

/// Texts about an export for the user.
struct ExportReport {
    std::string summary;   ///< lines: file, size and time; contents; mesh files
    std::string brief;     ///< "3 objects, 1 camera, 7 matrices of nodes"
    std::string warnings;  ///< one per line; empty if there are none
    std::string json;      ///< what the summary says, as a JSON object; docs/report.md describes it
};

/// Reads a written scene file back, and the mesh files that it refers to. `path` is UTF-8 and names
/// a regular file; `seconds` is the time that the export took. Throws `std::runtime_error` with one
/// line if a file is missing or malformed; the plug-in itself doesn't report a mesh file that
/// fails.
ExportReport report_on_file(const std::string& path, double seconds);

/// Reports in the same way on the files of an animation: a scene file for each frame from 0 to
/// `last_frame`, and the script.
ExportReport report_on_animation(const AnimationFiles& files, int last_frame, double seconds);

/// True if `path` is a regular file and not a device or a pipe.
bool can_be_read_back(const std::string& path);

}  // namespace vsqexport
