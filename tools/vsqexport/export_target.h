#pragma once

#include <string>

namespace vsqexport {

/// Makes sure of a target before an export starts, as the host's save dialog does: its folder
/// exists, it is no folder, it can be written, and it isn't the model file itself. Throws
/// `std::runtime_error` with one line that names the target and the reason. Paths are UTF-8.
void check_export_target(const std::string& target, const std::string& source);

/// The same for the files of an animation, of which it tries the first.
void check_animation_target(const std::string& target, const std::string& source);

/// True for "-", which stands for standard output.
bool is_standard_output(const std::string& target);

}  // namespace vsqexport
