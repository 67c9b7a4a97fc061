#pragma once

#include "plugins/3dsmax/export/export_notes.h"
#include "plugins/3dsmax/export/options.h"

/// The class in hexadecimal digits, for a reason: "class 0x25, 0x0".
std::string ClassText(const Class_ID& class_id);

/// Note why a mesh is left out. `mesh` has no vertices, no faces, or foreign vertices; `class_id`
/// is one for which `IsLeftOutAsMesh` is true.
void NoteLeftOutMesh(const NodeNotes& notes, const Mesh& mesh);
void NoteLeftOutClass(const NodeNotes& notes, const Class_ID& class_id,
                      const Qor::Options& options);

/// Notes what no mesh takes along.
void NoteMeshExtras(const NodeNotes& notes, const Mesh& mesh);
