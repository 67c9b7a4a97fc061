#pragma once

#include <fstream>
#include <string>

namespace vsqinfo {

/// Opens the file at `path` in binary mode: UTF-8, or what a scene says of a mesh file. Throws
/// `UnreadableFile` for a folder, and for what isn't there or can't be opened.
std::ifstream open_input_file(const std::string& path);

}  // namespace vsqinfo
