#pragma once

#include <vector>

#include "model/triangle_arrays.h"
#include "plugins/3dsmax/export/copied_mesh.h"
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

/// Whether objects of that class go into no scene: bones if they aren't wanted, and geometry that
/// only its own plug-in can render.
bool IsLeftOutAsMesh(const Class_ID& class_id, const Qor::Options& options);

/// Whether every face uses vertices that the mesh has.
bool UsesItsOwnVertices(const Mesh& mesh);

/// Takes a point of the node's object into the node's space. For an object under a world-space
/// modifier it undoes the node's own transform.
Matrix3 NodeFromObject(INode* node, TimeValue t);

/// Turns a host mesh into the arrays of triangle objects, one for each material that its faces use.
///
/// The work on the mesh as a whole is done once, that on its parts for each of them. Storage is
/// kept from one mesh to the next.
///
///     parts.begin(mesh, table);
///     for (int part = 0; parts.has_part(part); ++part) {
///         parts.build(part, offset, object);
///         ...
///         parts.keep_storage_of(object);
///     }
class MeshPartBuilder {
public:
    /// Borrows both until the last part is built. The mesh must use its own vertices.
    void begin(const CopiedMesh& copy, const MaterialTable& table);

    /// Whether any face has the material of that entry.
    bool has_part(int part) const;

    /// Fills the empty arrays of `object` with the faces of a part, in their order. Positions and
    /// normals go through `node_from_object`. False if the part's texture coordinates point
    /// nowhere; it goes without them then.
    bool build(int part, const Matrix3& node_from_object, qor::TriangleObject& object);

    /// Takes the arrays of an object that isn't needed any more, for the memory that they have.
    void keep_storage_of(qor::TriangleObject& object);

private:
    // The texture coordinates of a part: the host's, by face, and what they go through.
    struct Coordinates {
        const UVVert* verts = nullptr;  // null for a part without them
        const TVFace* faces = nullptr;
        Matrix3 transform;
    };

    // The faces of a part in `faces_by_part_`, or those of the whole mesh where it has one part.
    struct FaceRange {
        size_t begin;
        size_t end;
    };

    void sort_faces();
    FaceRange faces_of(int part) const;
    template <typename Visit>
    void for_each_face(int part, Visit visit) const;
    bool choose_coordinates(int part, Coordinates& coordinates) const;
    std::vector<int> find_vertices(int part, const Coordinates& coordinates);
    void fill_arrays(const Matrix3& node_from_object, qor::TriangleObject& object);

    const Mesh* mesh_ = nullptr;
    const MaterialTable* table_ = nullptr;
    VertexNormals normals_;
    VertexKeyTable keys_;
    qor::TriangleArrays storage_;        // empty, of the last object
    std::vector<int> faces_by_part_;     // where there are several; each part's in their order
    std::vector<size_t> ends_of_parts_;  // in that list
};
