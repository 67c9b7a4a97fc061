#include "plugins/3dsmax/export/mesh_part.h"

#include <algorithm>
#include <utility>

#include "model/triangle_object.h"
#include "plugins/3dsmax/export/material_table.h"
#include "plugins/3dsmax/export/matrix_inverse.h"

bool IsLeftOutAsMesh(const Class_ID& class_id, const Qor::Options& options) {
    const Class_ID bone(0x28bf6e8d, 0x2ecca840);
    const Class_ID excluded(0x608b1c8f, 0x2f0b0d2d);
    return (!options.Bones && class_id == bone) || class_id == excluded;
}

bool UsesItsOwnVertices(const Mesh& mesh) {
    DWORD highest = 0;
    for (int f = 0; f < mesh.numFaces; ++f) {
        for (const DWORD vertex : mesh.faces[f].v) {
            highest = vertex > highest ? vertex : highest;
        }
    }
    return highest < static_cast<DWORD>(mesh.numVerts);
}

Matrix3 NodeFromObject(INode* node, TimeValue t, ExportNotes* notes) {
    const Matrix3 world_from_node = node->GetNodeTM(t);
    const Matrix3 world_from_object = node->GetObjTMAfterWSM(t);
    return world_from_object * InverseOrIdentity(world_from_node, {notes, node}, "its own matrix");
}

void MeshPartBuilder::begin(const CopiedMesh& copy, const MaterialTable& table) {
    mesh_ = &copy.mesh;
    table_ = &table;
    normals_.compute(copy);
    earlier_vertices_ = 0;
    sort_faces();
}

bool MeshPartBuilder::has_part(int part) const {
    return table_->entry(part) != nullptr;
}

// Lists the faces of each part, so that a mesh of many materials isn't searched once per part.
void MeshPartBuilder::sort_faces() {
    faces_by_part_.clear();
    ends_of_parts_.clear();
    if (!has_part(1)) {
        return;
    }
    for (int f = 0; f < mesh_->numFaces; ++f) {
        const size_t part = table_->entry_of_face(mesh_->faces[f]);
        if (ends_of_parts_.size() <= part) {
            ends_of_parts_.resize(part + 1, 0);
        }
        ++ends_of_parts_[part];
    }
    // This turns the counts into starts. Filling a part then moves its start to its end.
    size_t start = 0;
    for (size_t& end : ends_of_parts_) {
        start += std::exchange(end, start);
    }
    faces_by_part_.resize(static_cast<size_t>(mesh_->numFaces));
    for (int f = 0; f < mesh_->numFaces; ++f) {
        faces_by_part_[ends_of_parts_[table_->entry_of_face(mesh_->faces[f])]++] = f;
    }
}

MeshPartBuilder::FaceRange MeshPartBuilder::faces_of(int part) const {
    if (ends_of_parts_.empty()) {
        return {0, static_cast<size_t>(mesh_->numFaces)};
    }
    const size_t index = static_cast<size_t>(part);
    return {index == 0 ? 0 : ends_of_parts_[index - 1], ends_of_parts_[index]};
}

template <typename Visit>
void MeshPartBuilder::for_each_face(int part, Visit visit) const {
    const FaceRange faces = faces_of(part);
    const bool is_whole_mesh = faces_by_part_.empty();
    for (size_t i = faces.begin; i < faces.end; ++i) {
        visit(is_whole_mesh ? static_cast<int>(i) : faces_by_part_[i]);
    }
}

bool MeshPartBuilder::build(int part, const Matrix3& node_from_object,
                            qor::TriangleObject& object) {
    Coordinates coordinates;
    const bool coordinates_are_sound = choose_coordinates(part, coordinates);
    std::vector<int> triangles = find_vertices(part, node_from_object, coordinates);
    object.set_arrays(std::exchange(storage_, {}));
    object.set_triangles(std::move(triangles));
    fill_arrays(node_from_object, object);
    return coordinates_are_sound;
}

void MeshPartBuilder::keep_storage_of(qor::TriangleObject& object) {
    storage_ = object.take_arrays();
    storage_.clear();
    keys_.keep_storage(std::move(storage_.vertices), std::move(storage_.normals),
                       std::move(storage_.uv_tex));
}

// False if an index of a texture coordinate is out of range.
bool MeshPartBuilder::choose_coordinates(int part, Coordinates& coordinates) const {
    const MaterialEntry& entry = *table_->entry(part);
    const int channel = entry.coordinate_channel();
    if (channel < 0) {
        return true;
    }
    const UVVert* verts = mesh_->mapVerts(channel);
    const TVFace* faces = mesh_->mapFaces(channel);
    if (verts == nullptr || faces == nullptr) {
        return true;
    }
    DWORD highest = 0;
    for_each_face(part, [&highest, faces](int f) {
        for (const DWORD place : faces[f].t) {
            highest = place > highest ? place : highest;
        }
    });
    if (highest >= static_cast<DWORD>(mesh_->getNumMapVerts(channel))) {
        return false;
    }
    coordinates = {verts, faces, entry.uv_transform};
    return true;
}

// Finds or adds the output vertex of each corner, and returns their numbers. Most corners share
// their normal and coordinates with an earlier one, whose vertex is then known.
std::vector<int> MeshPartBuilder::find_vertices(int part, const Matrix3& node_from_object,
                                                const Coordinates& coordinates) {
    const FaceRange faces = faces_of(part);
    const size_t corners = 3 * (faces.end - faces.begin);
    const size_t vertices = static_cast<size_t>(mesh_->numVerts);
    keys_.begin(*mesh_, node_from_object, corners, std::max(vertices, normals_.count()),
                coordinates.verts != nullptr);

    std::vector<int> triangles = std::move(storage_.triangles);
    triangles.resize(corners);
    int* next = triangles.data();
    for_each_face(part, [this, &coordinates, &next](int f) {
        const Face& face = mesh_->faces[f];
        for (int corner = 0; corner < 3; ++corner) {
            const DWORD place = coordinates.verts == nullptr ? 0 : coordinates.faces[f].t[corner];
            VertexNormal* const record = normals_.record(f, corner);
            if (record != nullptr && record->output_vertex >= earlier_vertices_ &&
                record->place == place) {
                *next++ = record->output_vertex - earlier_vertices_;
                continue;
            }
            VertexKey key = {normals_.normal(f, corner, record), 0.0f, 0.0f};
            if (coordinates.verts != nullptr) {
                const Point3 moved = coordinates.verts[place] * coordinates.transform;
                key.u = moved.x;
                key.v = moved.y;
            }
            const int number = keys_.find_or_add(face.v[corner], key);
            if (record != nullptr) {
                record->output_vertex = earlier_vertices_ + number;
                record->place = place;
            }
            *next++ = number;
        }
    });
    earlier_vertices_ += static_cast<int>(keys_.count());
    return triangles;
}

// Takes the arrays of the vertices, and transforms the normals.
void MeshPartBuilder::fill_arrays(const Matrix3& node_from_object, qor::TriangleObject& object) {
    object.set_vertices(keys_.take_positions());
    object.set_uv_tex(keys_.take_coordinates());

    std::vector<float> normals = keys_.take_normals();
    for (size_t i = 0; i < normals.size(); i += 3) {
        float* numbers = &normals[i];
        const Point3 normal =
            Normalize(node_from_object.VectorTransform(Point3(numbers[0], numbers[1], numbers[2])));
        numbers[0] = normal.x;
        numbers[1] = normal.y;
        numbers[2] = normal.z;
    }
    object.set_normals(std::move(normals));
}
