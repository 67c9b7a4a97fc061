#pragma once

#include <fstream>
#include <string>

namespace vsqexport {

/// The name for standard output, also in the plug-in's save dialog.
constexpr char kStandardOutput[] = "-";

/// Checks a target before an export starts, as the host's save dialog does: its folder must exist,
/// the target must not be a folder or the model file itself, and it must be writable. Pipes and
/// devices are not checked. Throws `std::runtime_error` with one line that names the target and the
/// reason. Paths are UTF-8.
void check_export_target(const std::string& target, const std::string& source);

/// Checks the first of an animation's files in the same way.
void check_animation_target(const std::string& target, const std::string& source);

/// If the target is a pipe, waits until a reader opens it and returns a stream to it; otherwise
/// returns a closed stream. The caller keeps the stream until the plug-in has written the scene: a
/// reader that comes after the plug-in has closed the pipe would find it empty.
std::ofstream wait_for_reader(const std::string& target);

/// True for `kStandardOutput` and for a path that leads to the same device or file.
bool is_standard_output(const std::string& target);

}  // namespace vsqexport
