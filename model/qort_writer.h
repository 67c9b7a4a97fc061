#pragma once

#include <cstdint>
#include <cstdio>

#include "model/qort_format.h"

namespace qor {

/// Which of its arrays a `QorTMesh` frees.
enum QorTOwnership : std::uint16_t {
    kOwnsArrays = 1,       ///< the mesh frees its separate arrays and its frames with `free`
    kOwnsInterleaved = 2,  ///< the mesh frees `interleaved` with `free`
};

/// A flag for the writers: write the interleaved form.
constexpr std::uint32_t kWriteInterleaved = 1;

/// A mesh for the writer of `.qorT` files, with positions and normals for one or more frames.
/// Counts are in whole elements, over all frames. Missing arrays are null.
struct QorTMesh {
    std::uint32_t triangle_count = 0;
    std::uint32_t vertex_count = 0;
    std::uint32_t normal_count = 0;
    std::uint32_t uv_count = 0;
    std::uint32_t* triangles = nullptr;       ///< three indices into `vertices` per triangle
    std::uint32_t* normal_indices = nullptr;  ///< three indices into `normals` per triangle
    std::uint32_t* uv_indices = nullptr;      ///< three indices into `uvs` per triangle
    float* vertices = nullptr;                ///< three numbers per vertex
    float* normals = nullptr;                 ///< three per normal
    float* uvs = nullptr;                     ///< two per texture coordinate
    float* colours = nullptr;                 ///< three per vertex
    float* interleaved = nullptr;  ///< eight per vertex: position, normal, texture coordinate
    std::uint16_t ownership = 0;   ///< bits of `QorTOwnership`
    QorTFrame* frames = nullptr;
    std::uint32_t frame_count = 0;

    QorTMesh() = default;
    QorTMesh(const QorTMesh&) = delete;
    QorTMesh& operator=(const QorTMesh&) = delete;
    ~QorTMesh();
};

/// Writes a mesh to a file and replaces an existing one. Returns false if the mesh couldn't be
/// written completely; the reason goes to standard error. An existing file stays unchanged if the
/// mesh has no vertices or no triangles. `path` is UTF-8.
bool write_qort_file(QorTMesh& mesh, const char* path, std::uint32_t write_flags);

/// Like `write_qort_file`, but writes to an open stream; `path` is only used in messages. After a
/// failure, data that is already written stays in the stream.
bool write_qort_stream(QorTMesh& mesh, std::FILE* file, const char* path,
                       std::uint32_t write_flags);

/// Returns the interleaved array, which stays part of the mesh, and makes it first if there is
/// none. A mesh with indices of normals or texture coordinates is unrolled for that: each corner
/// gets a vertex of its own, and the separate arrays are dropped. Returns null and leaves the mesh
/// unchanged if there isn't enough memory or there are too many corners.
float* interleave(QorTMesh& mesh);

/// Writes a block: its head and `size` bytes. Returns false if that fails or the size doesn't fit
/// into the head; the reason goes to standard error.
bool write_tag(const QorTMesh& mesh, const void* data, std::uint32_t tag, std::uint64_t size,
               std::FILE* file);

}  // namespace qor
