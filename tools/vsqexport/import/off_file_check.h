#pragma once

#include <istream>

namespace vsqexport {

/// False for an OFF file whose header promises more vertices or faces than the file has bytes.
/// Assimp believes the header and fills gigabytes of memory before it notices. True for files of
/// other formats.
bool off_counts_fit_file(std::istream& file);

}  // namespace vsqexport
