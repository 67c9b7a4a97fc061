#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vsqexport {

/// What `collect_scenes` did.
struct Collected {
    std::uint64_t files = 0;  ///< the scenes included
    std::uint64_t bytes = 0;
    std::vector<std::string>
        missing;  ///< a line for each file that a scene names and that isn't there
};

/// Copies scene files, and the pictures and mesh files that they name, to a folder, which is made
/// if it isn't there. The copied scenes name these files without a folder, so the folder can be
/// moved. A file of the renderer itself stays as it is. What is missing keeps its path and is told.
///
/// Two files of one name get different ones, in plain ASCII. Nothing that is in the folder is
/// replaced, unless `force` is true. Throws `std::runtime_error` with one line that names a file
/// and the reason; then no scene has been copied. Paths are UTF-8.
Collected collect_scenes(const std::vector<std::string>& scenes, const std::string& folder,
                         bool force);

}  // namespace vsqexport
