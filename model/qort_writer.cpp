#include "model/qort_writer.h"

#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <utility>

#include "platform/files.h"

namespace qor {

namespace {

// Larger than any coordinate of a scene.
constexpr float kFarAway = 1e20f;

// The floats of an interleaved vertex: position, normal and texture coordinate.
constexpr std::uint64_t kInterleavedFloats = 8;
static_assert(kInterleavedFloats * sizeof(float) == qort::kInterleavedSize);

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

// An array that a `QorTMesh` can take over: its memory comes from `malloc`.
template <typename T>
using Owned = std::unique_ptr<T, Free>;

struct Block {
    std::uint32_t tag;
    const void* data;
    std::uint64_t size;  // in bytes
};

// The blocks of the separate form after the frame table, in file order. Indices are left out if the
// array that they refer to is missing.
struct SeparateBlocks {
    explicit SeparateBlocks(const QorTMesh& mesh) {
        const std::uint64_t corners_size = qort::kTriangleSize * mesh.triangle_count;
        add(qort::kTriangles, mesh.triangles, corners_size);
        add(qort::kVertices, mesh.vertices, qort::kVertexSize * mesh.vertex_count);
        add(qort::kNormals, mesh.normals, qort::kVertexSize * mesh.normal_count);
        add(qort::kNormalIndices, mesh.normals != nullptr ? mesh.normal_indices : nullptr,
            corners_size);
        add(qort::kUvs, mesh.uvs, qort::kUvSize * mesh.uv_count);
        add(qort::kUvIndices, mesh.uvs != nullptr ? mesh.uv_indices : nullptr, corners_size);
        add(qort::kColours, mesh.colours, qort::kVertexSize * mesh.vertex_count);
    }

    void add(std::uint32_t tag, const void* data, std::uint64_t size) {
        if (data != nullptr) {
            blocks[count++] = {tag, data, size};
        }
    }

    // There is always one, because a mesh without triangles is never written.
    std::uint32_t last_tag() const { return blocks[count - 1].tag; }

    Block blocks[7];
    int count = 0;
};

std::uint64_t frames_size(const QorTMesh& mesh) {
    return qort::kFrameSize * mesh.frame_count;
}

// The end of the data as the format counts it, without the heads of the blocks.
std::uint64_t data_end(const QorTMesh& mesh) {
    std::uint64_t end = qort::kHeaderSize;
    if (mesh.frames == nullptr) {
        return end;
    }
    end += frames_size(mesh);
    const SeparateBlocks separate(mesh);
    for (int i = 0; i < separate.count; ++i) {
        end += separate.blocks[i].size;
    }
    return end;
}

// Sets `box` to the minimum, then the maximum of all positions. NaN coordinates are ignored.
void find_box(const QorTMesh& mesh, float (&box)[6]) {
    const float* position = mesh.vertices != nullptr ? mesh.vertices : mesh.interleaved;
    const std::uint64_t stride = mesh.vertices != nullptr ? 3 : kInterleavedFloats;
    for (int axis = 0; axis < 3; ++axis) {
        box[axis] = kFarAway;
        box[axis + 3] = -kFarAway;
    }
    for (std::uint32_t v = 0; v < mesh.vertex_count; ++v, position += stride) {
        for (int axis = 0; axis < 3; ++axis) {
            box[axis] = position[axis] < box[axis] ? position[axis] : box[axis];
            box[axis + 3] = position[axis] > box[axis + 3] ? position[axis] : box[axis + 3];
        }
    }
}

template <typename T>
void put(unsigned char* header, std::uint32_t offset, const T& value) {
    std::memcpy(header + offset, &value, sizeof value);
}

bool write_header(const QorTMesh& mesh, std::FILE* file, const char* path) {
    unsigned char header[qort::kHeaderSize] = {};
    const bool has_frames = mesh.frames != nullptr;
    float box[6];
    find_box(mesh, box);
    put(header, 0, qort::kMagic);
    put(header, qort::kVersionOffset, qort::kVersion);
    put(header, qort::kHasFramesOffset, static_cast<std::uint32_t>(has_frames));
    put(header, qort::kFramesOffsetOffset, has_frames ? qort::kHeaderSize : 0);
    put(header, qort::kBoxOffset, box);
    put(header, qort::kDataEndOffset, data_end(mesh));
    if (std::fwrite(header, sizeof header, 1, file) != 1) {
        std::fprintf(stderr, "Failed writing header to \"%s\"\n", path);
        return false;
    }
    return true;
}

bool can_be_written(const QorTMesh& mesh) {
    if ((mesh.vertices == nullptr && mesh.interleaved == nullptr) || mesh.vertex_count == 0) {
        std::fprintf(stderr, "Cannot write qorT triangle mesh without vertices\n");
        return false;
    }
    if (mesh.triangles == nullptr || mesh.triangle_count == 0) {
        std::fprintf(stderr, "Cannot write qorT triangle mesh without triangles\n");
        return false;
    }
    return true;
}

void report_failed_payload(std::uint32_t tag) {
    std::fprintf(stderr, "Failed writing tag data {%d}\n", static_cast<int>(tag));
}

bool write_separate(const QorTMesh& mesh, std::FILE* file) {
    const SeparateBlocks separate(mesh);
    for (int i = 0; i < separate.count; ++i) {
        const Block& block = separate.blocks[i];
        if (!write_tag(mesh, block.data, block.tag, block.size, file)) {
            return false;
        }
    }
    return true;
}

bool write_interleaved(QorTMesh& mesh, std::FILE* file) {
    const float* interleaved = interleave(mesh);
    if (interleaved == nullptr) {
        report_failed_payload(qort::kInterleaved);
        return false;
    }
    return write_tag(mesh, mesh.triangles, qort::kTriangles,
                     qort::kTriangleSize * mesh.triangle_count, file) &&
           write_tag(mesh, interleaved, qort::kInterleaved,
                     qort::kInterleavedSize * mesh.vertex_count, file);
}

template <typename T>
Owned<T> allocate(std::uint64_t count) {
    if (count > std::numeric_limits<std::size_t>::max() / sizeof(T)) {
        return nullptr;
    }
    return Owned<T>(static_cast<T*>(std::malloc(static_cast<std::size_t>(count) * sizeof(T))));
}

// Copies one element, or fills in zeros if there is no array. Returns the end of the element.
float* copy_element(float* target, const float* array, std::uint32_t index, int size) {
    if (array != nullptr) {
        std::memcpy(target, array + static_cast<std::size_t>(size) * index,
                    static_cast<std::size_t>(size) * sizeof(float));
    } else {
        std::memset(target, 0, static_cast<std::size_t>(size) * sizeof(float));
    }
    return target + size;
}

float* copy_vertex(float* target, const QorTMesh& mesh, std::uint32_t position,
                   std::uint32_t normal, std::uint32_t uv) {
    target = copy_element(target, mesh.vertices, position, 3);
    target = copy_element(target, mesh.normals, normal, 3);
    return copy_element(target, mesh.uvs, uv, 2);
}

void free_arrays(QorTMesh& mesh) {
    std::free(mesh.triangles);
    std::free(mesh.normal_indices);
    std::free(mesh.uv_indices);
    std::free(mesh.vertices);
    std::free(mesh.normals);
    std::free(mesh.uvs);
    std::free(mesh.colours);
}

float* interleave_vertices(QorTMesh& mesh) {
    Owned<float> interleaved = allocate<float>(kInterleavedFloats * mesh.vertex_count);
    if (interleaved == nullptr) {
        return nullptr;
    }
    float* next = interleaved.get();
    for (std::uint32_t v = 0; v < mesh.vertex_count; ++v) {
        next = copy_vertex(next, mesh, v, v, v);
    }
    mesh.interleaved = interleaved.release();
    mesh.ownership |= kOwnsInterleaved;
    return mesh.interleaved;
}

// A mesh that takes over new arrays also frees its frames, so frames that belong to the caller must
// be copied first. Returns false if there isn't enough memory.
bool copy_borrowed_frames(QorTMesh& mesh) {
    if (mesh.frames == nullptr || (mesh.ownership & kOwnsArrays)) {
        return true;
    }
    Owned<QorTFrame> frames = allocate<QorTFrame>(mesh.frame_count);
    if (frames == nullptr) {
        return false;
    }
    std::memcpy(frames.get(), mesh.frames, static_cast<std::size_t>(frames_size(mesh)));
    mesh.frames = frames.release();
    return true;
}

// Fills in one vertex for each corner of each triangle, and the triangles that refer to them.
void unroll(const QorTMesh& mesh, float* interleaved, std::uint32_t* triangles) {
    const std::uint32_t* normal_of = mesh.normal_indices ? mesh.normal_indices : mesh.triangles;
    const std::uint32_t* uv_of = mesh.uv_indices ? mesh.uv_indices : mesh.triangles;
    for (std::uint32_t corner = 0; corner < 3 * mesh.triangle_count; ++corner) {
        interleaved = copy_vertex(interleaved, mesh, mesh.triangles[corner], normal_of[corner],
                                  uv_of[corner]);
        triangles[corner] = corner;
    }
}

// Replaces the separate arrays of a mesh with the unrolled ones.
void take_unrolled(QorTMesh& mesh, Owned<float> interleaved, Owned<std::uint32_t> triangles) {
    if (mesh.ownership & kOwnsArrays) {
        free_arrays(mesh);
    }
    mesh.vertex_count = 3 * mesh.triangle_count;
    mesh.normal_indices = nullptr;
    mesh.uv_indices = nullptr;
    mesh.vertices = nullptr;
    mesh.normals = nullptr;
    mesh.uvs = nullptr;
    mesh.colours = nullptr;
    mesh.triangles = triangles.release();
    mesh.interleaved = interleaved.release();
    mesh.ownership |= kOwnsArrays | kOwnsInterleaved;
}

// Gives each corner of each triangle a vertex of its own.
float* interleave_corners(QorTMesh& mesh) {
    const std::uint64_t corners = 3ULL * mesh.triangle_count;
    if (corners > std::numeric_limits<std::uint32_t>::max()) {
        return nullptr;
    }
    Owned<float> interleaved = allocate<float>(kInterleavedFloats * corners);
    Owned<std::uint32_t> triangles = allocate<std::uint32_t>(corners);
    // The copy comes last because it changes the mesh.
    if (interleaved == nullptr || triangles == nullptr || !copy_borrowed_frames(mesh)) {
        return nullptr;
    }
    unroll(mesh, interleaved.get(), triangles.get());
    take_unrolled(mesh, std::move(interleaved), std::move(triangles));
    return mesh.interleaved;
}

}  // namespace

QorTMesh::~QorTMesh() {
    if (ownership & kOwnsArrays) {
        free_arrays(*this);
        std::free(frames);
    }
    if (ownership & kOwnsInterleaved) {
        std::free(interleaved);
    }
}

bool write_qort_file(QorTMesh& mesh, const char* path, std::uint32_t write_flags) {
    if (!can_be_written(mesh)) {
        return false;
    }
    std::unique_ptr<std::FILE, platform::CloseStream> file(platform::open_file(path, "wb+"));
    if (!file) {
        std::fprintf(stderr, "Failed opening \"%s\" for writing!\n", path);
        return false;
    }
    const bool written = write_qort_stream(mesh, file.get(), path, write_flags);
    if (std::fclose(file.release()) != 0 && written) {
        std::fprintf(stderr, "Failed closing \"%s\"\n", path);
        return false;
    }
    return written;
}

bool write_qort_stream(QorTMesh& mesh, std::FILE* file, const char* path,
                       std::uint32_t write_flags) {
    if (!can_be_written(mesh) || !write_header(mesh, file, path)) {
        return false;
    }
    if (mesh.frames != nullptr &&
        !write_tag(mesh, mesh.frames, qort::kFrames, frames_size(mesh), file)) {
        return false;
    }
    const bool is_separate = mesh.interleaved == nullptr && (write_flags & kWriteInterleaved) == 0;
    const std::uint32_t last_tag =
        is_separate ? SeparateBlocks(mesh).last_tag() : std::uint32_t{qort::kInterleaved};
    if (!(is_separate ? write_separate(mesh, file) : write_interleaved(mesh, file))) {
        return false;
    }
    // Buffered data is written here, so a full disk may be noticed only now.
    if (std::fflush(file) != 0) {
        report_failed_payload(last_tag);
        return false;
    }
    return true;
}

float* interleave(QorTMesh& mesh) {
    if (mesh.interleaved != nullptr) {
        return mesh.interleaved;
    }
    return mesh.normal_indices == nullptr && mesh.uv_indices == nullptr ? interleave_vertices(mesh)
                                                                        : interleave_corners(mesh);
}

bool write_tag(const QorTMesh&, const void* data, std::uint32_t tag, std::uint64_t size,
               std::FILE* file) {
    if (size > std::numeric_limits<std::uint32_t>::max()) {
        report_failed_payload(tag);
        return false;
    }
    if (std::fwrite(&tag, sizeof tag, 1, file) != 1) {
        std::fprintf(stderr, "Failed writing tag data [%d]\n", static_cast<int>(tag));
        return false;
    }
    const std::uint32_t written_size = static_cast<std::uint32_t>(size);
    if (std::fwrite(&written_size, sizeof written_size, 1, file) != 1) {
        std::fprintf(stderr, "Failed writing tag data (%d)\n", static_cast<int>(tag));
        return false;
    }
    if (std::fwrite(data, written_size, 1, file) != 1) {
        report_failed_payload(tag);
        return false;
    }
    return true;
}

}  // namespace qor
