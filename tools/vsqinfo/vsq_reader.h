#pragma once

#include <istream>
#include <string>

#include "tools/vsqinfo/malformed_file.h"
#include "tools/vsqinfo/vsq_listener.h"
#include "tools/vsqinfo/vsq_summary.h"

namespace vsqinfo {

/// Reads a whole scene file and checks everything that can be checked.
///
/// A file that passes is whole: it has a header, unless it came over the live link, a version and a
/// root group; every block is closed; every name, number and array is well-formed; blocks nest as
/// the format requires; array bodies have the length that they announce; and triangles refer to
/// vertices that exist. docs/vsq-format.md describes the format.
///
/// The scene isn't kept in memory, which holds only a buffer of fixed size, a small entry for each
/// open block, and the distinct names of materials and textures. Blocks may nest to any depth.
///
/// `stream` must be in binary mode. Throws `MalformedFile`, or `UnreadableFile` if the stream
/// fails. `listener` is borrowed and may be null.
VsqSummary read_vsq(std::istream& stream, VsqListener* listener = nullptr);

/// Reads the file at `path`, which is UTF-8, in the same way.
VsqSummary read_vsq_file(const std::string& path, VsqListener* listener = nullptr);

}  // namespace vsqinfo
