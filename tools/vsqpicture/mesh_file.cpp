#include "tools/vsqpicture/mesh_file.h"

#include <cstring>
#include <vector>

#include "tools/vsqinfo/qort_reader.h"

namespace vsqpicture {
namespace {

using vsqinfo::QortArray;

// Keeps the arrays of the whole file.
class Reader final : public vsqinfo::QortListener {
public:
    bool array_begins(QortArray array, std::uint64_t) override {
        array_ = array;
        return array != QortArray::kFrames;
    }

    void array_words(const std::uint32_t* words, std::size_t count, std::uint64_t) override {
        switch (array_) {
            case QortArray::kTriangles:
                return append(mesh.triangles, words, count);
            case QortArray::kNormalIndices:
                return append(mesh.normal_indices, words, count);
            case QortArray::kUvIndices:
                return append(mesh.uv_indices, words, count);
            case QortArray::kVertices:
                return append(mesh.positions, words, count);
            case QortArray::kNormals:
                return append(mesh.normals, words, count);
            case QortArray::kUvs:
                return append(mesh.uvs, words, count);
            case QortArray::kColours:
                return append(mesh.colours, words, count);
            case QortArray::kInterleaved:
                return append(interleaved, words, count);
            case QortArray::kFrames:
                return;
        }
    }

    Mesh mesh;
    std::vector<float> interleaved;

private:
    template <typename Number>
    static void append(std::vector<Number>& array, const std::uint32_t* words, std::size_t count) {
        static_assert(sizeof(Number) == sizeof *words, "numbers of mesh files have 32 bits");
        const std::size_t start = array.size();
        array.resize(start + count);
        std::memcpy(&array[start], words, count * sizeof *words);
    }

    QortArray array_ = QortArray::kFrames;
};

void separate(const std::vector<float>& interleaved, Mesh& mesh) {
    constexpr std::size_t kNumbers = 8;
    for (std::size_t i = 0; i + kNumbers <= interleaved.size(); i += kNumbers) {
        const float* const vertex = &interleaved[i];
        mesh.positions.insert(mesh.positions.end(), vertex, vertex + 3);
        mesh.normals.insert(mesh.normals.end(), vertex + 3, vertex + 6);
        mesh.uvs.insert(mesh.uvs.end(), vertex + 6, vertex + kNumbers);
    }
}

template <typename Number>
void keep(std::vector<Number>& array, std::size_t numbers, std::uint32_t start,
          std::uint32_t count) {
    const auto first = array.begin() + static_cast<std::ptrdiff_t>(numbers * start);
    array = std::vector<Number>(first, first + static_cast<std::ptrdiff_t>(numbers * count));
}

}  // namespace

std::shared_ptr<const Mesh> read_mesh_file(const std::string& path, double frame) {
    Reader reader;
    const vsqinfo::QortSummary summary = vsqinfo::read_qort_file(path, &reader);
    const auto mesh = std::make_shared<Mesh>(std::move(reader.mesh));
    if (summary.is_interleaved) {
        separate(reader.interleaved, *mesh);
    } else if (!summary.frames.empty()) {
        const vsqinfo::QortFrame* shown = &summary.frames.front();
        for (const vsqinfo::QortFrame& candidate : summary.frames) {
            shown = candidate.number <= frame ? &candidate : shown;
        }
        keep(mesh->triangles, 3, shown->triangles_start, shown->triangles_count);
        keep(mesh->positions, 3, shown->vertices_start, shown->vertices_count);
        keep(mesh->normals, 3, shown->normals_start, shown->normals_count);
        keep(mesh->uvs, 2, shown->uvs_start, shown->uvs_count);
    }
    return mesh;
}

}  // namespace vsqpicture
