#pragma once

#include <vector>

#include "plugins/3dsmax/export/copied_mesh.h"

/// The normal for those corners of a vertex that share a smoothing group. The records of a vertex
/// form a chain.
struct VertexNormal {
    Point3 normal;    ///< a weighted sum of face normals, normalised at the end
    DWORD smoothing;  ///< the union of the groups that went into it
    int next;         ///< the next record of the vertex, or negative
};

/// The normals of a mesh, computed from its smoothing groups. A corner with an explicit normal in
/// the mesh keeps that one.
///
/// A face's normal is added to the first record of the vertex that shares a group with the face, or
/// to a new record if there is none. A face without groups shares none:
///
///     faces at a vertex, by groups   its records
///     1, 1, 1                        {1}
///     1, 2, 0                        {1} {2} {}
///     1, 2, then 1 and 2             {1, 2}: the third joins the first, which absorbs the second
///
/// Storage is kept from one mesh to the next.
class VertexNormals {
public:
    /// Borrows the copy until the last `lookup`. Its vertex indices must be in range.
    void compute(const CopiedMesh& copy);

    /// How many different normals the corners of all vertices have at least, without explicit ones.
    size_t count() const { return records_.size(); }

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
    std::vector<VertexNormal> records_;  // one chain head per vertex, then the others
};

// The id of this corner's explicit normal, regardless of the face's other corners.
inline int VertexNormals::explicit_normal(int face, int corner) const {
    const int id = face < spec_->GetNumFaces() ? spec_->GetNormalIndex(face, corner) : -1;
    const bool counts = id >= 0 && id < spec_->GetNumNormals() && spec_->GetNormalExplicit(id);
    return counts ? id : kNoExplicitNormal;
}

inline Point3 VertexNormals::lookup(int face, int corner) const {
    const Face& corners = mesh_->faces[face];
    const DWORD vertex = corners.v[corner];
    if (spec_ != nullptr) {
        // Explicit normals belong to a face and a vertex: if two corners share a vertex, the later
        // one counts.
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
