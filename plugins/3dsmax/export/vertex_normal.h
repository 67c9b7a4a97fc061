#pragma once

#include <vector>

#include "plugins/3dsmax/export/copied_mesh.h"

/// The normal that the corners of a vertex share which share a smoothing group. The records of a
/// vertex form a chain.
struct VertexNormal {
    Point3 normal;    ///< a weighted sum of face normals, in the end of unit length
    DWORD smoothing;  ///< the union of the groups that went into it
    int next;         ///< the next record of the vertex, or below 0
};

/// The normals of a mesh, worked out from its smoothing groups. Where the mesh itself fixes the
/// normal of a corner by an explicit one, that one holds.
///
/// A face's normal goes into the first record of its vertex with which it shares a group, and into
/// a new one if there is none. A face without any group shares with none:
///
///     faces at a vertex, by groups   its records
///     1, 1, 1                        {1}
///     1, 2, 0                        {1} {2} {}
///     1, 2, then 1 and 2             {1, 2}: the first takes the third in, and then the second
///
/// Storage is kept from one mesh to the next.
class VertexNormals {
public:
    /// Borrows the copy until the last `lookup`. Its faces must use vertices that it has.
    void compute(const CopiedMesh& copy);

    /// The normal of a face's corner, in the mesh's space.
    Point3 lookup(int face, int corner) const;

private:
    static constexpr int kNoExplicitNormal = -1;

    void add(DWORD vertex, const Point3& weighted_normal, DWORD groups);
    void add_without_groups(DWORD vertex, const Point3& weighted_normal);
    void append(int last, const Point3& normal, DWORD groups);
    void finish(int head);
    int explicit_normal(int face, int corner) const;

    const Mesh* mesh_ = nullptr;
    MeshNormalSpec* spec_ = nullptr;
    std::vector<VertexNormal> records_;  // one for each vertex, which starts its chain, then others
};

/// The angle by which a face turns at a corner, in radians: what a corner's normal is weighted
/// with. `edge_in` leads to the corner and `edge_out` away from it, both of unit length.
float CornerAngle(const Point3& edge_in, const Point3& edge_out);

// The id of the explicit normal of a corner itself.
inline int VertexNormals::explicit_normal(int face, int corner) const {
    const int id = face < spec_->GetNumFaces() ? spec_->GetNormalIndex(face, corner) : -1;
    const bool counts = id >= 0 && id < spec_->GetNumNormals() && spec_->GetNormalExplicit(id);
    return counts ? id : kNoExplicitNormal;
}

inline Point3 VertexNormals::lookup(int face, int corner) const {
    const Face& corners = mesh_->faces[face];
    const DWORD vertex = corners.v[corner];
    if (spec_ != nullptr) {
        // Explicit normals go by face and vertex: of two corners on one vertex the later one
        // counts.
        for (int i = 2; i >= 0; --i) {
            if (corners.v[i] == vertex) {
                const int id = explicit_normal(face, i);
                if (id != kNoExplicitNormal) {
                    return spec_->Normal(id);
                }
            }
        }
    }
    const VertexNormal* record = &records_[vertex];
    while ((record->smoothing & corners.smGroup) == 0 && record->next >= 0) {
        record = &records_[static_cast<size_t>(record->next)];
    }
    return record->normal;
}
