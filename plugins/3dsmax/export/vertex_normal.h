#pragma once

#include <memory>
#include <vector>

#include "plugins/3dsmax/export/copied_mesh.h"

/// The normal for those corners of a vertex that share a smoothing group. The records of a vertex
/// form a chain.
struct VertexNormal {
    Point3 normal;       ///< a weighted sum of face normals; normalised when it is first used
    DWORD smoothing;     ///< the union of the groups that went into it
    VertexNormal* next;  ///< the next record of the vertex, or null

    /// The output vertex of the last corner that used the normal, counted over all parts of the
    /// mesh, and the index of that corner's texture coordinates. A further corner with both in
    /// common has the same output vertex, so it needn't be searched for.
    int output_vertex;
    DWORD place;  ///< set together with `output_vertex`

    static constexpr int kRaw = -2;      ///< no corner has used the normal; it isn't normalised
    static constexpr int kUnknown = -1;  ///< a corner has used it, but its vertex isn't known
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
    /// Borrows the copy until the last `normal`. Its vertex indices must be in range.
    void compute(const CopiedMesh& copy);

    /// How many different normals the corners of all vertices have at least, without explicit ones.
    size_t count() const { return heads_.size() + other_count_; }

    /// The record for a face's corner, or null if the corner has an explicit normal.
    VertexNormal* record(int face, int corner);

    /// The normal of a face's corner, in the mesh's space. `record` is the one for it.
    Point3 normal(int face, int corner, VertexNormal* record);

private:
    static constexpr int kNoExplicitNormal = -1;
    static constexpr size_t kChunk = 1024;  // records

    void add(DWORD vertex, const Point3& weighted_normal, DWORD groups);
    void add_without_groups(VertexNormal& head, const Point3& weighted_normal);
    VertexNormal* new_record(const Point3& normal, DWORD groups);
    void merge_chain(VertexNormal& head);
    int explicit_normal(int face, int corner) const;
    int explicit_normal_of_vertex(int face, int corner) const;

    const Mesh* mesh_ = nullptr;
    MeshNormalSpec* spec_ = nullptr;
    std::vector<VertexNormal> heads_;  // one per vertex, or none if all normals are explicit
    // All other records, in chunks of one size: they stay where they are as their number grows.
    std::vector<std::unique_ptr<VertexNormal[]>> other_chunks_;
    size_t other_count_ = 0;
    std::vector<Point3> face_normals_;  // of a block of faces
    std::vector<float> angles_;         // at their corners
    bool may_share_groups_ = false;     // whether two records of a vertex may share a group
};

// The id of this corner's explicit normal, regardless of the face's other corners.
inline int VertexNormals::explicit_normal(int face, int corner) const {
    const int id = face < spec_->GetNumFaces() ? spec_->GetNormalIndex(face, corner) : -1;
    const bool counts = id >= 0 && id < spec_->GetNumNormals() && spec_->GetNormalExplicit(id);
    return counts ? id : kNoExplicitNormal;
}

// Explicit normals belong to a face and a vertex: if two corners share a vertex, the later one
// counts.
inline int VertexNormals::explicit_normal_of_vertex(int face, int corner) const {
    const DWORD* const vertices = mesh_->faces[face].v;
    int id = kNoExplicitNormal;
    for (int i = 2; i >= 0 && id == kNoExplicitNormal; --i) {
        if (vertices[i] == vertices[corner]) {
            id = explicit_normal(face, i);
        }
    }
    return id;
}

inline VertexNormal* VertexNormals::record(int face, int corner) {
    if (spec_ != nullptr && explicit_normal_of_vertex(face, corner) != kNoExplicitNormal) {
        return nullptr;
    }
    const Face& corners = mesh_->faces[face];
    VertexNormal* record = &heads_[corners.v[corner]];
    while ((record->smoothing & corners.smGroup) == 0 && record->next != nullptr) {
        record = record->next;
    }
    return record;
}

inline Point3 VertexNormals::normal(int face, int corner, VertexNormal* record) {
    if (record == nullptr) {
        return spec_->Normal(explicit_normal_of_vertex(face, corner));
    }
    if (record->output_vertex == VertexNormal::kRaw) {
        record->normal = Normalize(record->normal);
        record->output_vertex = VertexNormal::kUnknown;
    }
    return record->normal;
}
