#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace vsqinfo {

struct QortFrame {
    std::uint32_t number = 0;
    float time = 0;  ///< in seconds
    std::uint32_t triangles_start = 0;
    std::uint32_t triangles_count = 0;
    std::uint32_t vertices_start = 0;
    std::uint32_t vertices_count = 0;
    std::uint32_t normals_start = 0;
    std::uint32_t normals_count = 0;
    std::uint32_t uvs_start = 0;
    std::uint32_t uvs_count = 0;
};

/// The contents of a mesh file. Counts are of whole elements, over all frames.
struct QortSummary {
    std::uint64_t file_size = 0;  ///< bytes
    std::uint32_t version = 0;
    bool is_interleaved = false;  ///< positions, normals and texture coordinates in one array

    std::vector<QortFrame> frames;  ///< empty for a still mesh
    std::uint64_t triangles = 0;
    std::uint64_t vertices = 0;
    std::uint64_t normals = 0;         ///< this and the following are 0 if interleaved
    std::uint64_t normal_indices = 0;  ///< triples
    std::uint64_t uvs = 0;
    std::uint64_t uv_indices = 0;  ///< triples
    std::uint64_t colours = 0;

    std::array<float, 3> box_minimum{};
    std::array<float, 3> box_maximum{};
};

/// The summary as aligned lines, each with its line feed.
std::string summary_text(const QortSummary& summary);

}  // namespace vsqinfo
