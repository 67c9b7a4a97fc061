#include "plugins/3dsmax/export/mesh_notes.h"

#include <cstdio>

#include "plugins/3dsmax/export/mesh_part.h"

namespace {

constexpr int kVertexColourChannel = 0;

std::string ForeignVertexText(const Mesh& mesh) {
    for (int f = 0; f < mesh.numFaces; ++f) {
        for (const DWORD vertex : mesh.faces[f].v) {
            if (vertex >= static_cast<DWORD>(mesh.numVerts)) {
                return "face " + std::to_string(f) + " names vertex " + std::to_string(vertex) +
                       " of " + std::to_string(mesh.numVerts);
            }
        }
    }
    return {};
}

}  // namespace

std::string ClassText(const Class_ID& class_id) {
    Class_ID copy = class_id;  // the parts have no const getters in every release
    char text[64];
    std::snprintf(text, sizeof text, "class 0x%lx, 0x%lx", static_cast<unsigned long>(copy.PartA()),
                  static_cast<unsigned long>(copy.PartB()));
    return text;
}

void NoteLeftOutMesh(const NodeNotes& notes, const Mesh& mesh) {
    if (!notes) {
        return;
    }
    if (mesh.numVerts < 1 || mesh.numFaces < 1) {
        notes.add(Note::kMeshWithoutFaces, std::to_string(mesh.numVerts) + " vertices, " +
                                               std::to_string(mesh.numFaces) + " faces");
    } else {
        notes.add(Note::kMeshForeignVertices, ForeignVertexText(mesh));
    }
}

void NoteLeftOutClass(const NodeNotes& notes, const Class_ID& class_id,
                      const Qor::Options& options) {
    if (!notes) {
        return;
    }
    Qor::Options with_bones = options;
    with_bones.Bones = true;
    if (IsLeftOutAsMesh(class_id, with_bones)) {
        notes.add(Note::kMeshClassLeftOut, ClassText(class_id));
    } else {
        notes.add(Note::kMeshBonesOff);
    }
}

void NoteMeshExtras(const NodeNotes& notes, const Mesh& mesh) {
    if (notes && mesh.mapSupport(kVertexColourChannel)) {
        notes.add(Note::kMeshVertexColours);
    }
}
