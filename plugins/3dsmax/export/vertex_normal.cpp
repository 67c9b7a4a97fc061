#include "plugins/3dsmax/export/vertex_normal.h"

#include "plugins/3dsmax/export/arc_cosine.h"

namespace {

constexpr int kEndOfChain = -1;
constexpr int kUnused = -2;  // of a record that starts a chain and has taken no normal in

// The sides of a face, in the order of its corners: side 0 leads from corner 0 to corner 1. Each
// corner's angle needs two of them, so their lengths are worked out once.
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

    // Without a direction on both sides of a corner there is no angle, and no weight.
    float angle(int corner) const {
        const int in = corner == 0 ? 2 : corner - 1;
        return has_length[in] && has_length[corner] ? CornerAngle(direction[in], direction[corner])
                                                    : 0.0f;
    }

    Point3 normal;  // its length is twice the face's area
    Point3 direction[3];
    bool has_length[3];
};

}  // namespace

float CornerAngle(const Point3& edge_in, const Point3& edge_out) {
    float cosine = edge_out % edge_in;
    if (cosine < -1.0f) {
        cosine = -1.0f;
    } else if (cosine > 1.0f) {
        cosine = 1.0f;
    }
    return NarrowedArcCosine(cosine);
}

void VertexNormals::compute(const CopiedMesh& copy) {
    const Mesh& mesh = copy.mesh;
    mesh_ = &mesh;
    spec_ = copy.specified_normals;
    records_.clear();

    const size_t vertex_count = static_cast<size_t>(mesh.numVerts);
    for (int f = 0; f < mesh.numFaces; ++f) {
        const Face& face = mesh.faces[f];
        bool smoothed[3] = {true, true, true};
        if (spec_ != nullptr) {
            for (int corner = 0; corner < 3; ++corner) {
                smoothed[corner] = explicit_normal(f, corner) == kNoExplicitNormal;
            }
            if (!smoothed[0] && !smoothed[1] && !smoothed[2]) {
                continue;
            }
        }
        if (records_.empty()) {
            records_.assign(vertex_count, {Point3(0.0f, 0.0f, 0.0f), 0, kUnused});
        }
        const FaceSides sides(mesh, face);
        for (int corner = 0; corner < 3; ++corner) {
            if (smoothed[corner]) {
                add(face.v[corner], sides.normal * sides.angle(corner), face.smGroup);
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
    // The chain is short: each record in it has brought a group along that those before it lacked.
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

// Each face without groups gets a record of its own at the end of the chain. Of those behind the
// head only the last can ever be asked for, so it takes the place of the one before it: a vertex
// that very many such faces share would have a chain as long.
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
            // To the end with it.
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
    if (records_.size() == records_.capacity()) {
        // No more can come than there are corners. Room that isn't used is never touched.
        const size_t corners = 3 * static_cast<size_t>(mesh_->numFaces);
        records_.reserve(static_cast<size_t>(mesh_->numVerts) + corners);
    }
    records_[static_cast<size_t>(last)].next = static_cast<int>(records_.size());
    records_.push_back({normal, groups, kEndOfChain});
}

// Each record takes in those behind it that share a group with it: two groups can have been joined
// after each had got a record of its own.
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
