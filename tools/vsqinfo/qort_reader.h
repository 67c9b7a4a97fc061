#pragma once

#include <istream>
#include <string>

#include "tools/vsqinfo/malformed_file.h"
#include "tools/vsqinfo/qort_listener.h"
#include "tools/vsqinfo/qort_summary.h"

namespace vsqinfo {

/// Reads a whole mesh file and checks everything that can be checked.
///
/// A file that passes is whole: its blocks are in order and have the sizes that they announce,
/// frames lie within the arrays, indices refer to elements that exist, the box encloses all
/// positions, and nothing follows the last block. docs/qort-format.md describes the format.
///
/// Uses buffers of fixed size, and memory for the frames.
///
/// `stream` must be in binary mode. Throws `MalformedFile`, or `UnreadableFile` if the stream
/// fails. `listener` is borrowed and may be null.
QortSummary read_qort(std::istream& stream, QortListener* listener = nullptr);

/// Reads the file at `path`, which is UTF-8, in the same way.
QortSummary read_qort_file(const std::string& path, QortListener* listener = nullptr);

/// True if the next byte of `stream` begins a mesh file, which no scene file begins with. Leaves
/// the stream's position alone.
bool begins_as_qort(std::istream& stream);

}  // namespace vsqinfo
