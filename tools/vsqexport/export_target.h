#pragma once

#include <fstream>
#include <string>

namespace vsqexport {

/// What stands for standard output, in the plug-in's save dialog as well.
constexpr char kStandardOutput[] = "-";

/// Makes sure of a target before an export starts, as the host's save dialog does: its folder
/// exists, it is no folder, a file can be written there, and it isn't the model file itself. Pipes
/// and devices are left alone. Throws `std::runtime_error` with one line that names the target and
/// the reason. Paths are UTF-8.
void check_export_target(const std::string& target, const std::string& source);

/// The same for the files of an animation, of which it tries the first.
void check_animation_target(const std::string& target, const std::string& source);

/// If the target is a pipe, waits until somebody reads from it and gives a stream to it; otherwise
/// gives a closed stream. The caller keeps the stream until the plug-in has written the scene: a
/// reader that comes after the plug-in has closed the pipe would find it empty.
std::ofstream wait_for_reader(const std::string& target);

/// True for `kStandardOutput` and for a path that leads to the same device or file.
bool is_standard_output(const std::string& target);

}  // namespace vsqexport
