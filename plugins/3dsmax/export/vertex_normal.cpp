#include "plugins/3dsmax/export/vertex_normal.h"

#include <algorithm>

#include "plugins/3dsmax/export/arc_cosine.h"

namespace {

constexpr int kEndOfChain = -1;
constexpr int kUnused = -2;  // the first record of a chain, before it has a normal

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
    records_.clear();

    const size_t vertex_count = static_cast<size_t>(mesh.numVerts);
    constexpr int kBlock = 256;  // of faces, so that arc cosines are computed several at a time
    Point3 face_normals[kBlock];
    float angles[3 * kBlock];
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
                if (records_.empty()) {
                    records_.assign(vertex_count, {Point3(0.0f, 0.0f, 0.0f), 0, kUnused});
                }
                add(face.v[corner], face_normals[i] * angles[3 * i + corner], face.smGroup);
            }
        }
    }

    const size_t head_count = records_.empty() ? 0 : vertex_count;
    for (size_t i = 0; i < head_count; ++i) {
        finish(static_cast<int>(i));
    }
}

void VertexNormals::add(DWORD vertex, const Point3& weighted_normal, DWORD groups) {
    VertexNormal& head = records_[vertex];
    if (head.next == kUnused) {
        head.normal += weighted_normal;
        head.smoothing = groups;
        head.next = kEndOfChain;
        return;
    }
    if (groups == 0) {
        add_without_groups(vertex, weighted_normal);
        return;
    }
    // The chain is short, since each record in it has a group that the records before it lacked.
    for (int i = static_cast<int>(vertex);;) {
        VertexNormal& record = records_[static_cast<size_t>(i)];
        if ((record.smoothing & groups) != 0) {
            record.normal += weighted_normal;
            record.smoothing |= groups;
            return;
        }
        if (record.next == kEndOfChain) {
            append(i, weighted_normal, groups);
            return;
        }
        i = record.next;
    }
}

// A face without groups needs a record of its own at the end of the chain. Of these records after
// the head, `lookup` can reach only the last, so a new one replaces the one before it. Otherwise a
// vertex shared by very many such faces would have an equally long chain.
void VertexNormals::add_without_groups(DWORD vertex, const Point3& weighted_normal) {
    int before = static_cast<int>(vertex);
    while (true) {
        const int next = records_[static_cast<size_t>(before)].next;
        if (next == kEndOfChain) {
            append(before, weighted_normal, 0);
            return;
        }
        VertexNormal& record = records_[static_cast<size_t>(next)];
        if (record.smoothing == 0) {
            // Move the record to the end.
            int last = next;
            while (records_[static_cast<size_t>(last)].next != kEndOfChain) {
                last = records_[static_cast<size_t>(last)].next;
            }
            if (last != next) {
                records_[static_cast<size_t>(before)].next = record.next;
                records_[static_cast<size_t>(last)].next = next;
                record.next = kEndOfChain;
            }
            record.normal = weighted_normal;
            return;
        }
        before = next;
    }
}

void VertexNormals::append(int last, const Point3& normal, DWORD groups) {
    records_[static_cast<size_t>(last)].next = static_cast<int>(records_.size());
    records_.push_back({normal, groups, kEndOfChain});
}

// Merges each record with later ones that share a group with it. Two groups can have been joined
// after each already had a record.
void VertexNormals::finish(int head) {
    for (int i = head; i >= 0; i = records_[static_cast<size_t>(i)].next) {
        VertexNormal& record = records_[static_cast<size_t>(i)];
        for (int* link = &record.next; *link >= 0;) {
            VertexNormal& other = records_[static_cast<size_t>(*link)];
            if ((record.smoothing & other.smoothing) != 0) {
                record.normal += other.normal;
                *link = other.next;
            } else {
                link = &other.next;
            }
        }
        record.normal = Normalize(record.normal);
    }
}
