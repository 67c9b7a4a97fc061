#pragma once

#include <string>
#include <vector>

namespace vsqexport {

/// Lets the program vsqpicture, which is in this program's folder, draw scene files: the first has
/// a whole scene, the others change it. What can't be drawn is told on standard error. Throws
/// `std::runtime_error` with one line if no picture was made. Paths are UTF-8.
void draw_picture(const std::vector<std::string>& scene_files, const std::string& picture);

}  // namespace vsqexport
