#pragma once

#include <istream>
#include <string>

#include "tools/vsqinfo/malformed_file.h"
#include "tools/vsqinfo/qort_summary.h"

namespace vsqinfo {

/// Reads a mesh file from first to last byte and checks what can be checked of it.
///
/// A file that is read without complaint is whole: its blocks come in their order and have the
/// sizes that they announce, frames lie within the arrays, indices lead to elements that exist, the
/// box encloses all positions, and nothing follows the last block. docs/qort-format.md tells the
/// format.
///
/// Memory goes to buffers of fixed size and the frames.
///
/// `stream` must be in binary mode. Throws `MalformedFile`, or `UnreadableFile` if the stream
/// fails.
QortSummary read_qort(std::istream& stream);

/// The same for the file at `path`, which is UTF-8.
QortSummary read_qort_file(const std::string& path);

/// True if what follows in `stream`, which stays where it is, begins as a mesh file does. No scene
/// file does.
bool begins_as_qort(std::istream& stream);

}  // namespace vsqinfo
