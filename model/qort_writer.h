#pragma once

#include <cstdint>
#include <cstdio>

#include "model/qort_format.h"

namespace qor {

/// Who frees what of a `QorTMesh`.
enum QorTOwnership : std::uint16_t {
    kOwnsArrays = 1,       ///< the record frees its separate arrays and frames with `free`
    kOwnsInterleaved = 2,  ///< the record frees `interleaved` with `free`
};

/// A flag of the writers: the interleaved form is wanted.
constexpr std::uint32_t kWriteInterleaved = 1;

/// A mesh, with one or more sets of positions and normals, as the writer of `.qorT` files takes it.
/// Counts are those of whole elements, over all frames. Absent arrays are null.
struct QorTMesh {
    std::uint32_t triangle_count = 0;
    std::uint32_t vertex_count = 0;
    std::uint32_t normal_count = 0;
    std::uint32_t uv_count = 0;
    std::uint32_t* triangles = nullptr;       ///< three indices into `vertices` each
    std::uint32_t* normal_indices = nullptr;  ///< three indices into `normals` each
    std::uint32_t* uv_indices = nullptr;      ///< three indices into `uvs` each
    float* vertices = nullptr;                ///< three numbers each
    float* normals = nullptr;                 ///< three each
    float* uvs = nullptr;                     ///< two each
    float* colours = nullptr;                 ///< three to a vertex
    float* interleaved = nullptr;  ///< eight to a vertex: position, normal, texture coordinate
    std::uint16_t ownership = 0;
    QorTFrame* frames = nullptr;
    std::uint32_t frame_count = 0;

    QorTMesh() = default;
    QorTMesh(const QorTMesh&) = delete;
    QorTMesh& operator=(const QorTMesh&) = delete;
    ~QorTMesh();
};

/// Writes a mesh to a file, replacing an old one. False if it isn't written whole; the reason goes
/// to standard error. A mesh without vertices or triangles leaves the file as it was. `path` is
/// UTF-8.
bool write_qort_file(QorTMesh& mesh, const char* path, std::uint32_t write_flags);

/// The same to a stream that is open; `path` names it in messages. After a failure what was written
/// before stays.
bool write_qort_stream(QorTMesh& mesh, std::FILE* file, const char* path,
                       std::uint32_t write_flags);

/// The interleaved array, which the record keeps; it is made if there is none. A mesh with indices
/// of normals or texture coordinates is unrolled on the way: each corner gets a vertex of its own,
/// and the separate arrays go. Null if there is no memory for it, with the mesh as it was.
float* interleave(QorTMesh& mesh);

/// Writes a block: its head and `size` bytes. False, told on standard error, if that fails or the
/// size doesn't fit the head.
bool write_tag(const QorTMesh& mesh, const void* data, std::uint32_t tag, std::uint64_t size,
               std::FILE* file);

}  // namespace qor
