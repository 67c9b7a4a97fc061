#include "plugins/3dsmax/export/vertex_normal.h"

#include <algorithm>

#include "plugins/3dsmax/export/arc_cosine.h"

namespace {

// The first record of a chain is followed by this one as long as it has no normal.
VertexNormal unused = {Point3(0.0f, 0.0f, 0.0f), 0, nullptr, VertexNormal::kRaw, 0};

// `edge_in` leads to the corner and `edge_out` away from it, both of unit length.
float CornerCosine(const Point3& edge_in, const Point3& edge_out) {
    const float cosine = edge_out % edge_in;
    return cosine < -1.0f ? -1.0f : cosine > 1.0f ? 1.0f : cosine;
}

// The sides of a face, in the order of its corners: side 0 leads from corner 0 to corner 1. Each
// side is used by two corners, so its length is computed once.
struct FaceSides {
    explicit FaceSides(const Mesh& mesh, const Face& face) {
        const Point3& a = mesh.verts[face.v[0]];
        const Point3& b = mesh.verts[face.v[1]];
        const Point3& c = mesh.verts[face.v[2]];
        const Point3 sides[3] = {b - a, c - b, a - c};
        normal = sides[0] ^ sides[1];
        for (int i = 0; i < 3; ++i) {
            const float length = sides[i].Length();
            has_length[i] = length != 0.0f;
            direction[i] = sides[i] * (1.0f / length);
        }
    }

    // The cosine of the angle by which the outline turns at the corner. 1 if a side there has no
    // length: then the angle is 0, and the corner has no weight.
    float cosine(int corner) const {
        const int in = corner == 0 ? 2 : corner - 1;
        return has_length[in] && has_length[corner] ? CornerCosine(direction[in], direction[corner])
                                                    : 1.0f;
    }

    Point3 normal;  // its length is twice the face's area
    Point3 direction[3];
    bool has_length[3];
};

}  // namespace

void VertexNormals::compute(const CopiedMesh& copy) {
    const Mesh& mesh = copy.mesh;
    mesh_ = &mesh;
    spec_ = copy.specified_normals;
    heads_.clear();
    other_count_ = 0;
    may_share_groups_ = false;

    const size_t vertex_count = static_cast<size_t>(mesh.numVerts);
    constexpr int kBlock = 256;  // of faces, so that arc cosines are computed several at a time
    face_normals_.resize(kBlock);
    angles_.resize(3 * kBlock);
    Point3* const face_normals = face_normals_.data();
    float* const angles = angles_.data();
    for (int first = 0; first < mesh.numFaces; first += kBlock) {
        const int count = std::min(kBlock, mesh.numFaces - first);
        for (int i = 0; i < count; ++i) {
            const FaceSides sides(mesh, mesh.faces[first + i]);
            face_normals[i] = sides.normal;
            for (int corner = 0; corner < 3; ++corner) {
                angles[3 * i + corner] = sides.cosine(corner);
            }
        }
        NarrowArcCosines(angles, 3 * static_cast<size_t>(count));
        for (int i = 0; i < count; ++i) {
            const Face& face = mesh.faces[first + i];
            for (int corner = 0; corner < 3; ++corner) {
                if (spec_ != nullptr && explicit_normal(first + i, corner) != kNoExplicitNormal) {
                    continue;
                }
                if (heads_.empty()) {
                    heads_.assign(vertex_count,
                                  {Point3(0.0f, 0.0f, 0.0f), 0, &unused, VertexNormal::kRaw, 0});
                }
                add(face.v[corner], face_normals[i] * angles[3 * i + corner], face.smGroup);
            }
        }
    }

    if (may_share_groups_) {
        for (VertexNormal& head : heads_) {
            merge_chain(head);
        }
    }
}

void VertexNormals::add(DWORD vertex, const Point3& weighted_normal, DWORD groups) {
    VertexNormal& head = heads_[vertex];
    if (head.next == &unused) {
        head.normal += weighted_normal;
        head.smoothing = groups;
        head.next = nullptr;
        return;
    }
    if (groups == 0) {
        add_without_groups(head, weighted_normal);
        return;
    }
    // The chain is short, since each record in it has a group that the records before it lacked.
    VertexNormal* record = &head;
    while ((record->smoothing & groups) == 0) {
        if (record->next == nullptr) {
            record->next = new_record(weighted_normal, groups);
            return;
        }
        record = record->next;
    }
    record->normal += weighted_normal;
    may_share_groups_ |= (groups & ~record->smoothing) != 0;
    record->smoothing |= groups;
}

// A face without groups needs a record of its own at the end of the chain. Of these records after
// the head, `lookup` can reach only the last, so a new one replaces the one before it. Otherwise a
// vertex shared by very many such faces would have an equally long chain.
void VertexNormals::add_without_groups(VertexNormal& head, const Point3& weighted_normal) {
    VertexNormal** link = &head.next;
    while (*link != nullptr && (*link)->smoothing != 0) {
        link = &(*link)->next;
    }
    VertexNormal* const record = *link;
    if (record == nullptr) {
        *link = new_record(weighted_normal, 0);
        return;
    }
    // Move the record to the end.
    *link = record->next;
    while (*link != nullptr) {
        link = &(*link)->next;
    }
    *link = record;
    record->next = nullptr;
    record->normal = weighted_normal;
}

VertexNormal* VertexNormals::new_record(const Point3& normal, DWORD groups) {
    if (other_count_ == kChunk * other_chunks_.size()) {
        other_chunks_.emplace_back(new VertexNormal[kChunk]);
    }
    VertexNormal& record = other_chunks_[other_count_ / kChunk][other_count_ % kChunk];
    ++other_count_;
    record.normal = normal;
    record.smoothing = groups;
    record.next = nullptr;
    record.output_vertex = VertexNormal::kRaw;
    return &record;
}

// Merges each record of a vertex with later ones that share a group with it. Two groups can have
// been joined after each already had a record.
void VertexNormals::merge_chain(VertexNormal& head) {
    for (VertexNormal* record = &head; record != nullptr; record = record->next) {
        VertexNormal** link = &record->next;
        while (*link != nullptr) {
            const VertexNormal& other = **link;
            if ((record->smoothing & other.smoothing) != 0) {
                record->normal += other.normal;
                *link = other.next;
            } else {
                link = &(*link)->next;
            }
        }
    }
}
