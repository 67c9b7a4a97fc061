#pragma once

#include <istream>
#include <string>

#include "tools/vsqinfo/malformed_file.h"
#include "tools/vsqinfo/vsq_listener.h"
#include "tools/vsqinfo/vsq_summary.h"

namespace vsqinfo {

/// Reads a scene file from first to last byte and checks what can be checked of it.
///
/// A file that is read without complaint is whole: it has its header, unless it came over the live
/// link, its version and a root group, every block is closed, every name, number and array is in
/// its form, blocks nest as the format says, array bodies have the length that they announce, and
/// triangles use vertices that exist. docs/vsq-format.md tells the format.
///
/// Nothing of the scene is held: memory goes to a buffer of fixed size, one small entry for each
/// block that is open, and the distinct names of materials and textures. Blocks may nest to any
/// depth.
///
/// `stream` must be in binary mode. Throws `MalformedFile`, or `UnreadableFile` if the stream
/// fails. `listener` is borrowed and may be null.
VsqSummary read_vsq(std::istream& stream, VsqListener* listener = nullptr);

/// The same for the file at `path`, which is UTF-8.
VsqSummary read_vsq_file(const std::string& path, VsqListener* listener = nullptr);

}  // namespace vsqinfo
