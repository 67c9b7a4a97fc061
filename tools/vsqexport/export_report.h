#pragma once

#include <string>
#include <vector>

#include "tools/vsqexport/animation_files.h"

namespace vsqexport {

/// Texts about an export for the user.
struct ExportReport {
    std::string summary;                  ///< lines: file, size and time; contents; mesh files
    std::string brief;                    ///< "3 objects, 1 camera, 7 matrices of nodes"
    std::string warnings;                 ///< one per line; empty if there are none
    std::vector<std::string> mesh_files;  ///< their paths, in the bytes of the scene
    std::string json;  ///< what the summary says, as a JSON object; docs/report.md describes it
};

/// Reads a written scene file back, and the mesh files that it refers to. `path` is UTF-8 and names
/// a regular file; `seconds` is the time that the export took. Throws `std::runtime_error` with one
/// line if a file is missing or malformed; the plug-in itself doesn't report a mesh file that
/// fails. The texts call the file `shown`, if that isn't empty.
ExportReport report_on_file(const std::string& path, double seconds, const std::string& shown = "");

/// The files of an animation.
struct WrittenAnimation {
    AnimationFiles files;
    std::vector<int> numbers;  ///< of the frames, in order
    int first_rendered;        ///< the script renders from that one on
    std::string script;
};

/// The files of an animation whose frames are numbered from 0. Throws as
/// `AnimationFiles::check_script` does.
WrittenAnimation whole_animation(const AnimationFiles& files, int last_frame);

/// Reports in the same way on the files of an animation.
ExportReport report_on_animation(const WrittenAnimation& written, double seconds);

/// True if `path` is a regular file and not a device or a pipe.
bool can_be_read_back(const std::string& path);

}  // namespace vsqexport
