#pragma once

#include <string>
#include <vector>

namespace vsqexport {

/// A scene of a batch, and the file that it is exported to. Paths are UTF-8.
struct BatchFile {
    std::string source;
    std::string target;
    std::string resources;  ///< the folder of its mesh files and pictures
};

/// The files of a batch, in order. A folder among the sources is searched for model files, with the
/// folders below it, which are kept below `out_folder`; links to folders are not followed. "a.glb"
/// becomes "a.vsq". Files that would get one name keep their ending, as "a.glb.vsq", or get a
/// number if that isn't enough. A file that is named twice counts once. Throws `std::runtime_error`
/// with one line if a folder can't be read or there is nothing to export.
std::vector<BatchFile> batch_files(const std::vector<std::string>& sources,
                                   const std::string& out_folder);

}  // namespace vsqexport
