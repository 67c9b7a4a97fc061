#pragma once

#include <vector>

#include "model/triangle_arrays.h"
#include "plugins/3dsmax/export/copied_mesh.h"
#include "plugins/3dsmax/export/export_notes.h"
#include "plugins/3dsmax/export/host.h"
#include "plugins/3dsmax/export/options.h"
#include "plugins/3dsmax/export/vertex_key_table.h"
#include "plugins/3dsmax/export/vertex_normal.h"

namespace qor {
class TriangleObject;
}  // namespace qor

class MaterialTable;

/// The class of the host's triangle objects.
inline const Class_ID kTriangleObject(TRIOBJ_CLASS_ID, 0);

/// Whether objects of that class aren't exported as meshes: bones if the options exclude them, and
/// a class of geometry that only its own plug-in can render.
bool IsLeftOutAsMesh(const Class_ID& class_id, const Qor::Options& options);

/// Whether the vertex indices of all faces are in range.
bool UsesItsOwnVertices(const Mesh& mesh);

/// The transform from the space of the node's object to the node's space. For an object under a
/// world-space modifier it undoes the node's own transform.
Matrix3 NodeFromObject(INode* node, TimeValue t, ExportNotes* notes = nullptr);

/// Turns a host mesh into the arrays of triangle objects, one for each material that its faces use.
///
/// `begin` does the work for the whole mesh, `build` the work for one part. Storage is reused from
/// one mesh to the next.
///
///     parts.begin(mesh, table);
///     for (int part = 0; parts.has_part(part); ++part) {
///         parts.build(part, offset, object);
///         ...
///         parts.keep_storage_of(object);
///     }
class MeshPartBuilder {
public:
    /// Borrows both until the last part is built. The vertex indices of the mesh must be in range.
    void begin(const CopiedMesh& copy, const MaterialTable& table);

    /// Whether there is a part with that number. Each entry of the table is one part.
    bool has_part(int part) const;

    /// Fills the empty arrays of `object` with the faces of a part, in order. Transforms positions
    /// and normals by `node_from_object`. False if indices of texture coordinates are out of range;
    /// the part then has no coordinates.
    bool build(int part, const Matrix3& node_from_object, qor::TriangleObject& object);

    /// Takes the arrays of an object that is no longer needed, to reuse their memory.
    void keep_storage_of(qor::TriangleObject& object);

private:
    // The texture coordinates of a part: the host's values, their indices by face, and the
    // transform to apply.
    struct Coordinates {
        const UVVert* verts = nullptr;  // null for a part without texture coordinates
        const TVFace* faces = nullptr;
        Matrix3 transform;
    };

    // The range of a part in `faces_by_part_`, or all faces if the mesh has only one part.
    struct FaceRange {
        size_t begin;
        size_t end;
    };

    void sort_faces();
    FaceRange faces_of(int part) const;
    template <typename Visit>
    void for_each_face(int part, Visit visit) const;
    bool choose_coordinates(int part, Coordinates& coordinates) const;
    std::vector<int> find_vertices(int part, const Matrix3& node_from_object,
                                   const Coordinates& coordinates);
    void fill_arrays(const Matrix3& node_from_object, qor::TriangleObject& object);

    const Mesh* mesh_ = nullptr;
    const MaterialTable* table_ = nullptr;
    VertexNormals normals_;
    int earlier_vertices_ = 0;  // output vertices of the mesh's parts before the current one
    VertexKeyTable keys_;
    qor::TriangleArrays storage_;        // empty arrays of the last object
    std::vector<int> faces_by_part_;     // face numbers by part, if there are several
    std::vector<size_t> ends_of_parts_;  // each part's end in `faces_by_part_`
};
