#pragma once

#include <fstream>
#include <string>

namespace vsqexport {

/// The name for standard output, also in the plug-in's save dialog.
constexpr char kStandardOutput[] = "-";

/// Checks a target before an export starts, as the host's save dialog does: its folder must exist,
/// the target must not be a folder or the model file itself, and it must be writable. Pipes and
/// devices are not checked. A file that is there must be a scene of an earlier export, or empty,
/// unless `force` is true. Throws `std::runtime_error` with one line that names the target and the
/// reason. Paths are UTF-8.
void check_export_target(const std::string& target, const std::string& source, bool force = false);

/// Whether the path is that of a scene file.
bool holds_a_scene(const std::string& path);

/// Checks an animation's files in the same way: its first frame, and all frames and scripts that
/// are there.
void check_animation_target(const std::string& target, const std::string& source,
                            bool force = false);

/// If the target is a pipe, waits until a reader opens it and returns a stream to it; otherwise
/// returns a closed stream. The caller keeps the stream until the plug-in has written the scene: a
/// reader that comes after the plug-in has closed the pipe would find it empty.
std::ofstream wait_for_reader(const std::string& target);

/// True for `kStandardOutput` and for a path that leads to the same device or file.
bool is_standard_output(const std::string& target);

}  // namespace vsqexport
