#pragma once

#include <cstdint>

namespace qor {

/// The layout of `.qorT` mesh files: a header, then blocks of raw arrays. Numbers are
/// little-endian, and nothing is padded.
namespace qort {

constexpr char kMagic[4] = {'q', 'o', 'r', 'T'};
constexpr std::uint32_t kVersion = 3;
constexpr std::uint32_t kHeaderSize = 64;

/// Offsets in the header.
constexpr std::uint32_t kVersionOffset = 4;
constexpr std::uint32_t kHasFramesOffset = 8;
constexpr std::uint32_t kFramesOffsetOffset = 12;
constexpr std::uint32_t kBoxOffset = 16;  // minimum, then maximum, three floats each
constexpr std::uint32_t kDataEndOffset = 40;

/// What a block holds.
enum Tag : std::uint32_t {
    kTriangles = 1,
    kVertices = 2,
    kNormals = 3,
    kNormalIndices = 4,
    kUvs = 5,
    kUvIndices = 6,
    kColours = 7,
    kInterleaved = 8,
    kFrames = 9,
};

/// Bytes of one element: of a triangle, a vertex, a normal, a texture coordinate, ...
constexpr std::uint64_t kTriangleSize = 12;
constexpr std::uint64_t kVertexSize = 12;
constexpr std::uint64_t kUvSize = 8;
constexpr std::uint64_t kInterleavedSize = 32;
constexpr std::uint64_t kFrameSize = 40;

}  // namespace qort

/// Where a frame lies in the arrays of a file. Starts and counts are those of whole elements.
struct QorTFrame {
    std::uint32_t frame;
    float time;  ///< in seconds
    std::uint32_t triangles_start;
    std::uint32_t triangles_count;
    std::uint32_t vertices_start;
    std::uint32_t vertices_count;
    std::uint32_t normals_start;
    std::uint32_t normals_count;
    std::uint32_t uvs_start;
    std::uint32_t uvs_count;
};
static_assert(sizeof(QorTFrame) == qort::kFrameSize, "a frame goes into the file as it stands");

}  // namespace qor
