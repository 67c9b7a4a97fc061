#pragma once

#include <cstdint>

namespace qor {

/// The layout of `.qorT` mesh files: a header, then blocks of raw arrays. Numbers are
/// little-endian, without padding between them.
namespace qort {

constexpr char kMagic[4] = {'q', 'o', 'r', 'T'};
constexpr std::uint32_t kVersion = 3;
constexpr std::uint32_t kHeaderSize = 64;

/// Byte offsets in the header.
constexpr std::uint32_t kVersionOffset = 4;
constexpr std::uint32_t kHasFramesOffset = 8;
constexpr std::uint32_t kFramesOffsetOffset = 12;
constexpr std::uint32_t kBoxOffset = 16;  // minimum, then maximum, three floats each
constexpr std::uint32_t kDataEndOffset = 40;

/// The contents of a block.
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

/// The size of one element in bytes. Normals and colours have the size of a vertex.
constexpr std::uint64_t kTriangleSize = 12;
constexpr std::uint64_t kVertexSize = 12;
constexpr std::uint64_t kUvSize = 8;
constexpr std::uint64_t kInterleavedSize = 32;
constexpr std::uint64_t kFrameSize = 40;

}  // namespace qort

/// The part of the arrays in a file that belongs to one frame. Starts and counts are in whole
/// elements.
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
static_assert(sizeof(QorTFrame) == qort::kFrameSize,
              "frames are written to the file as they are in memory");

}  // namespace qor
