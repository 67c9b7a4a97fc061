#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

#include "standins/host/sdk/max.h"

/// A parameter of a scene file that is a binary array. All systems of the host are little-endian.
template <typename Number>
std::string array_text(const std::string& name, char tag, const std::vector<Number>& numbers) {
    const auto count = static_cast<std::uint32_t>(numbers.size());
    std::string text = "\"" + name + "\" [ \1\2\3" + tag;
    text.append(reinterpret_cast<const char*>(&count), sizeof count);
    text.append(reinterpret_cast<const char*>(numbers.data()), count * sizeof(Number));
    return text + "] ,\n";
}

/// A triangle object of a scene file, transformed to world space.
struct ExportedMesh {
    using Vector = std::array<double, 3>;

    std::string name;      // both names with their quotes, or in hexadecimal form
    std::string material;  // empty for an object without one
    std::vector<Vector> vertices;
    std::vector<Vector> normals;  // not of unit length if a node is scaled
    std::vector<std::array<float, 2>> uvs;
    std::vector<std::int32_t> triangles;
};

/// Reads the triangle objects of a scene file in order. The file must be well-formed.
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
    explicit ExportedMeshReader(const std::string& text) : text_(text) {}

    void read_line() {
        const std::string line = text_.substr(at_, text_.find('\n', at_) - at_);
        const auto starts = [&line](const std::string& word) {
            return line.compare(0, word.size(), word) == 0;
        };
        const size_t array = line.find("\" [ \1\2\3");
        if (array != std::string::npos) {
            at_ += array + 8;  // past the tag
            read_array(line.substr(1, array - 1));
        } else if (line == "}" || line == "},") {
            groups_.pop_back();
        } else if (starts("transform ")) {
            place(line.substr(10));
        } else if (!line.empty() && line.back() == '{' && !starts("#error ")) {
            groups_.push_back(starts("group ") ? meshes_.size() : std::string::npos);
            if (starts("object ")) {
                meshes_.emplace_back();
                meshes_.back().name = line.substr(7, line.size() - 9);
            } else if (starts("material ") && !meshes_.empty()) {
                meshes_.back().material = line.substr(9, line.size() - 11);
            }
        }
        at_ = text_.find('\n', at_) + 1;
    }

    template <typename Element>
    void take(std::vector<Element>& target, size_t bytes) {
        target.resize(bytes / sizeof(Element));
        std::memcpy(target.data(), text_.data() + at_, bytes);
    }

    // All numbers of meshes have four bytes.
    void read_array(const std::string& name) {
        std::uint32_t count = 0;
        std::memcpy(&count, text_.data() + at_, sizeof count);
        at_ += sizeof count;
        const size_t bytes = 4 * size_t{count};
        if (name == "uv_tex") {
            take(meshes_.back().uvs, bytes);
        } else if (name == "triangles") {
            take(meshes_.back().triangles, bytes);
        } else if (name == "vertices" || name == "normals") {
            std::vector<std::array<float, 3>> vectors;
            take(vectors, bytes);
            ExportedMesh& mesh = meshes_.back();
            for (const auto& [x, y, z] : vectors) {
                (name == "normals" ? mesh.normals : mesh.vertices).push_back({x, y, z});
            }
        }
        at_ += bytes;
    }

    // A group's matrix comes after the group's contents. Normals are transformed by the transposed
    // inverse.
    void place(const std::string& matrix) {
        std::istringstream numbers(matrix);
        Matrix3 world;
        float last_column = 0;
        for (int i = 0; i < 4; ++i) {
            Point3 row;
            numbers >> row.x >> row.y >> row.z >> last_column;
            world.SetRow(i, row);
        }
        const Matrix3 inverse = Inverse(world);
        for (size_t i = groups_.back(); i < meshes_.size(); ++i) {
            for (ExportedMesh::Vector& vertex : meshes_[i].vertices) {
                const Point3 v = Point3(vertex[0], vertex[1], vertex[2]) * world;
                vertex = {v.x, v.y, v.z};
            }
            for (ExportedMesh::Vector& normal : meshes_[i].normals) {
                const Point3 n(normal[0], normal[1], normal[2]);
                normal = {n % inverse.GetRow(0), n % inverse.GetRow(1), n % inverse.GetRow(2)};
            }
        }
    }

    const std::string& text_;
    size_t at_ = 0;
    std::vector<size_t> groups_;  // for each open block that is a group, its first mesh; else npos
    std::vector<ExportedMesh> meshes_;
};
