#include "importers/sceneapi/dev/qorsceneapi_oo.h"
#include "model/triangle_object.h"
#include "plugins/3dsmax/export/converted_object.h"
#include "plugins/3dsmax/export/material_notes.h"
#include "plugins/3dsmax/export/material_table.h"
#include "plugins/3dsmax/export/mesh_notes.h"
#include "plugins/3dsmax/export/mesh_part.h"
#include "plugins/3dsmax/export/narrow_name.h"
#include "plugins/3dsmax/export/scene_exporter.h"

// True if the node was handled as a mesh, even if a part of it couldn't be written.
bool SceneExporter::ExportMesh(INode* node) {
    if (!NodeIsWanted(node)) {
        return false;
    }
    const ObjectState state = node->EvalWorldState(timing_.time, TRUE);
    if (state.obj == nullptr || state.obj->SuperClassID() != GEOMOBJECT_CLASS_ID) {
        NoteMissingObject(node);
        return false;
    }
    const Class_ID class_id = state.obj->ClassID();

    AddToSceneBox(node, state.obj, host_->GetActiveViewExp().ToPointer());
    if (IsLeftOutAsMesh(class_id, *options_)) {
        NoteLeftOutClass(NotesOf(node), class_id, *options_);
        return false;
    }

    const ConvertedObject<TriObject> tri_object = GetTriObject(node, timing_.time);
    if (tri_object.get() == nullptr) {
        // In later frames of an animation most meshes are just not needed.
        if (notes_ != nullptr && (!animation_ || timing_.time == timing_.rangeStart)) {
            NotesOf(node).add(Note::kMeshNotConvertible, ClassText(class_id));
        }
        return false;
    }
    const CopiedMesh copy(tri_object->GetMesh());
    const Mesh& mesh = copy.mesh;
    if (mesh.numVerts < 1 || mesh.numFaces < 1 || !UsesItsOwnVertices(mesh)) {
        NoteLeftOutMesh(NotesOf(node), mesh);
        return false;
    }
    NoteMeshExtras(NotesOf(node), mesh);
    const MaterialTable table = make_material_table(mesh, node, timing_.time, notes_);
    mesh_parts_->begin(copy, table);
    for (int part = 0; mesh_parts_->has_part(part); ++part) {
        ExportMeshPart(node, part, table);
    }
    return true;
}

// Null if the object can't be converted to triangles or isn't needed in this frame's file.
ConvertedObject<TriObject> SceneExporter::GetTriObject(INode* node, TimeValue t) const {
    Object* object = node->EvalWorldState(t, TRUE).obj;
    const Interval valid = object->ObjectValidity(t);
    // The first frame's file holds all meshes, a later one only those that change at exactly its
    // tick.
    if (animation_ && valid.Start() != t && t != timing_.rangeStart) {
        return {};
    }
    return {object, t, kTriangleObject};
}

// Writes the faces of one material as a separate object with the node's name.
void SceneExporter::ExportMeshPart(INode* node, int part, const MaterialTable& table) {
    qor::TriangleObject object(NarrowName(node->GetName()));
    if (!mesh_parts_->build(part, NodeFromObject(node, timing_.time, notes_), object)) {
        NoteUnsoundCoordinates(*table.entry(part));
    }
    object.set_material(table.entry(part)->material);
    object.emit(*scene_);
    mesh_parts_->keep_storage_of(object);
}
