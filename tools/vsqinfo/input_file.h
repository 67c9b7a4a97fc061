#pragma once

#include <filesystem>
#include <fstream>
#include <string>

namespace vsqinfo {

/// The system's form of a path, which is UTF-8, or the bytes with which a scene names a mesh file.
std::filesystem::path input_path(const std::string& bytes);

/// Opens the file at `path` in binary mode. `path` is UTF-8, or the bytes with which a scene names
/// a mesh file. Throws `UnreadableFile` if the file is missing, is a folder, or can't be opened.
std::ifstream open_input_file(const std::string& path);

/// Removes the file at `path`, in the same form. It need not be there.
void remove_file(const std::string& path);

}  // namespace vsqinfo
