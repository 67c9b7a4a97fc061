#pragma once

#include <cstddef>
#include <cstdint>

#include "tools/vsqinfo/byte_source.h"

namespace vsqinfo {

/// The arrays of a mesh file; the values are the tags of their blocks.
enum class QortArray : std::uint32_t {
    kTriangles = 1,
    kVertices = 2,
    kNormals = 3,
    kNormalIndices = 4,
    kUvs = 5,
    kUvIndices = 6,
    kColours = 7,
    kInterleaved = 8,  ///< eight floats per vertex: position, normal, texture coordinate
    kFrames = 9,
};

/// Receives the arrays of a mesh file while it is read, in file order. The file may turn out to be
/// malformed later, so they are valid only once the reader returns.
class QortListener {
public:
    virtual ~QortListener() = default;

    /// True to get the array's words. `elements` are whole triangles, vertices and so on.
    virtual bool array_begins(QortArray, std::uint64_t /*elements*/) { return false; }

    /// Successive words of the array that began last: the bits of floats, or indices. `offset` is
    /// where the first one is in the file.
    virtual void array_words(const std::uint32_t* /*words*/, std::size_t /*count*/,
                             std::uint64_t /*offset*/) {}
};

}  // namespace vsqinfo
