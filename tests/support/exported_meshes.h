#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

/// A triangle object of a scene file, brought into world space.
struct ExportedMesh {
    using Vector = std::array<double, 3>;

    std::string name;      // both names with their quotes, or in hexadecimal form
    std::string material;  // empty for an object without one
    std::vector<Vector> vertices;
    std::vector<Vector> normals;  // of unit length in the file, not so in a scaled world
    std::vector<std::array<float, 2>> uvs;
    std::vector<std::int32_t> triangles;
};

/// Reads the triangle objects off the bytes of a scene file, in their order. It takes the file to
/// be well formed.
class ExportedMeshReader {
public:
    static std::vector<ExportedMesh> read(const std::string& text) {
        ExportedMeshReader reader(text);
        while (reader.at_ < text.size()) {
            reader.read_line();
        }
        return reader.meshes_;
    }

private:
    using Matrix = std::array<double, 16>;

    // A block that is open. A group's matrix comes behind what it holds.
    struct Block {
        bool is_group;
        size_t first_mesh;  // of those in the block
        Matrix matrix = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    };

    explicit ExportedMeshReader(const std::string& text) : text_(text) {}

    static bool starts(const std::string& line, const std::string& word) {
        return line.compare(0, word.size(), word) == 0;
    }

    void read_line() {
        const size_t name_end = text_[at_] == '"' ? text_.find('"', at_ + 1) : at_;
        if (text_.compare(name_end, 7, "\" [ \1\2\3") == 0) {
            const std::string array = text_.substr(at_ + 1, name_end - at_ - 1);
            at_ = name_end + 7;
            read_body(array);
        }
        const size_t end = text_.find('\n', at_);
        const std::string line = text_.substr(at_, end - at_);
        at_ = end + 1;
        if (line.empty() || starts(line, "#print ") || starts(line, "#error ")) {
            return;
        }
        if (line == "}" || line == "},") {
            close_block();
        } else if (starts(line, "transform ") && blocks_.back().is_group) {
            std::istringstream numbers(line.substr(10));
            for (double& number : blocks_.back().matrix) {
                numbers >> number;
            }
        } else if (line.back() == '{') {
            open_block(line);
        }
    }

    void open_block(const std::string& line) {
        blocks_.push_back({starts(line, "group "), meshes_.size()});
        const auto name = [&line](size_t start) {
            return line.substr(start, line.size() - start - 2);
        };
        if (starts(line, "object ")) {
            meshes_.emplace_back();
            meshes_.back().name = name(7);
        } else if (starts(line, "material ") && !meshes_.empty()) {
            meshes_.back().material = name(9);
        }
    }

    template <typename Element>
    void take(std::vector<Element>& target, size_t bytes) {
        target.resize(bytes / sizeof(Element));
        std::memcpy(target.data(), text_.data() + at_, bytes);
    }

    void take_vectors(std::vector<ExportedMesh::Vector>& target, size_t bytes) {
        std::vector<std::array<float, 3>> floats;
        take(floats, bytes);
        for (const auto& [x, y, z] : floats) {
            target.push_back({x, y, z});
        }
    }

    // All numbers of meshes have four bytes.
    void read_body(const std::string& array) {
        std::uint32_t count = 0;
        std::memcpy(&count, text_.data() + at_ + 1, sizeof count);
        at_ += 5;
        const size_t bytes = 4 * static_cast<size_t>(count);
        ExportedMesh& mesh = meshes_.back();
        if (array == "vertices") {
            take_vectors(mesh.vertices, bytes);
        } else if (array == "normals") {
            take_vectors(mesh.normals, bytes);
        } else if (array == "uv_tex") {
            take(mesh.uvs, bytes);
        } else if (array == "triangles") {
            take(mesh.triangles, bytes);
        }
        at_ += bytes;
    }

    void close_block() {
        const Block block = blocks_.back();
        blocks_.pop_back();
        for (size_t i = block.first_mesh; block.is_group && i < meshes_.size(); ++i) {
            place(meshes_[i], block.matrix);
        }
    }

    // Vectors are rows. Normals go through the inverse of the transposed matrix.
    static void place(ExportedMesh& mesh, const Matrix& m) {
        for (auto& [x, y, z] : mesh.vertices) {
            const ExportedMesh::Vector v = {x, y, z};
            x = v[0] * m[0] + v[1] * m[4] + v[2] * m[8] + m[12];
            y = v[0] * m[1] + v[1] * m[5] + v[2] * m[9] + m[13];
            z = v[0] * m[2] + v[1] * m[6] + v[2] * m[10] + m[14];
        }
        const auto cofactor = [&m](int row, int column) {
            const auto at = [&](int r, int c) {
                return m[static_cast<size_t>((row + r) % 3 * 4 + (column + c) % 3)];
            };
            return at(1, 1) * at(2, 2) - at(1, 2) * at(2, 1);
        };
        double determinant = 0;
        for (int column = 0; column < 3; ++column) {
            determinant += m[static_cast<size_t>(column)] * cofactor(0, column);
        }
        for (ExportedMesh::Vector& normal : mesh.normals) {
            const ExportedMesh::Vector n = normal;
            for (int column = 0; column < 3; ++column) {
                normal[static_cast<size_t>(column)] =
                    (n[0] * cofactor(0, column) + n[1] * cofactor(1, column) +
                     n[2] * cofactor(2, column)) /
                    determinant;
            }
        }
    }

    const std::string& text_;
    size_t at_ = 0;
    std::vector<Block> blocks_;
    std::vector<ExportedMesh> meshes_;
};
