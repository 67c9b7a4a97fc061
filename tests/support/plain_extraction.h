#pragma once

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <vector>

#include "plugins/3dsmax/export/host.h"

/// A plain and slow extraction of a mesh part, with a list for each vertex. The product's
/// extraction must give the same bits.
namespace plain {

/// A vertex normal, and the records of other smoothing groups as a linked list.
struct VertexNormal {
    Point3 normal = Point3(0, 0, 0);
    DWORD smoothing = 0;
    std::unique_ptr<VertexNormal> next;
    bool used = false;
    std::map<int, Point3> explicit_normals;  // by face

    void add(const Point3& n, DWORD groups) {
        if ((groups & smoothing) == 0 && used) {
            if (!next) {
                next = std::make_unique<VertexNormal>();
                next->normal = n;
                next->smoothing = groups;
                next->used = true;
                return;
            }
            next->add(n, groups);
            return;
        }
        normal += n;
        smoothing |= groups;
        used = true;
    }

    void finish() {
        for (std::unique_ptr<VertexNormal>* link = &next; *link;) {
            if (((*link)->smoothing & smoothing) != 0) {
                normal += (*link)->normal;
                *link = std::move((*link)->next);
            } else {
                link = &(*link)->next;
            }
        }
        normal = Normalize(normal);
        if (next) {
            next->finish();
        }
    }

    Point3 lookup(int face, DWORD groups) const {
        const auto fixed = explicit_normals.find(face);
        if (fixed != explicit_normals.end()) {
            return fixed->second;
        }
        const VertexNormal* record = this;
        while ((record->smoothing & groups) == 0 && record->next) {
            record = record->next.get();
        }
        return record->normal;
    }
};

inline float corner_angle(const Mesh& mesh, const Face& face, int corner) {
    const Point3 p = mesh.verts[face.v[corner]];
    const Point3 q = mesh.verts[face.v[(corner + 1) % 3]];
    const Point3 r = mesh.verts[face.v[(corner + 2) % 3]];
    Point3 e1 = q - p;
    Point3 e2 = p - r;
    if (e1.Length() == 0 || e2.Length() == 0) {
        return 0;
    }
    e1 = e1 * (1.0f / e1.Length());
    e2 = e2 * (1.0f / e2.Length());
    const float d = std::clamp(e1 % e2, -1.0f, 1.0f);
    return static_cast<float>(std::acos(static_cast<double>(d)));
}

inline std::vector<VertexNormal> compute_vertex_normals(Mesh& mesh) {
    MeshNormalSpec* spec = mesh.GetSpecifiedNormals();
    std::vector<VertexNormal> normals(static_cast<size_t>(mesh.numVerts));
    for (int f = 0; f < mesh.numFaces; ++f) {
        const Face& face = mesh.faces[f];
        const Point3 a = mesh.verts[face.v[0]];
        const Point3 b = mesh.verts[face.v[1]];
        const Point3 c = mesh.verts[face.v[2]];
        const Point3 n = (b - a) ^ (c - b);
        for (int corner = 0; corner < 3; ++corner) {
            VertexNormal& record = normals[face.v[corner]];
            const int i = spec != nullptr ? spec->GetNormalIndex(f, corner) : -1;
            if (i >= 0 && spec->GetNormalExplicit(i)) {
                record.explicit_normals[f] = spec->GetNormal(f, corner);
            } else {
                record.add(n * corner_angle(mesh, face, corner), face.smGroup);
            }
        }
    }
    for (VertexNormal& record : normals) {
        record.finish();
    }
    return normals;
}

/// The arrays of one part in the form that the renderer gets.
struct Part {
    std::vector<float> vertices, normals, uvs;
    std::vector<int> triangles;
};

/// `wanted(face)` is true for the faces of the part. A `channel` below 0 gives no coordinates.
template <typename Wanted>
Part extract(Mesh& mesh, const std::vector<VertexNormal>& vertex_normals, const Matrix3& offset,
             int channel, const Matrix3& uv_transform, Wanted wanted) {
    struct Key {
        Point3 normal;
        float u, v;
        int index;
    };
    std::vector<std::vector<Key>> keys(static_cast<size_t>(mesh.numVerts));
    const UVVert* map_verts = channel < 0 ? nullptr : mesh.mapVerts(channel);
    const TVFace* map_faces = channel < 0 ? nullptr : mesh.mapFaces(channel);
    const float tolerance = 1.1920929e-7f;
    Part part;
    int next_index = 0;
    for (int f = 0; f < mesh.numFaces; ++f) {
        if (!wanted(f)) {
            continue;
        }
        for (int corner = 0; corner < 3; ++corner) {
            const DWORD v = mesh.faces[f].v[corner];
            Key candidate = {vertex_normals[v].lookup(f, mesh.faces[f].smGroup), 0, 0, -1};
            if (map_verts != nullptr) {
                const Point3 t = map_verts[map_faces[f].t[corner]] * uv_transform;
                candidate.u = t.x;
                candidate.v = t.y;
            }
            for (const Key& key : keys[v]) {
                const bool differs =
                    std::fabs((key.normal - candidate.normal).LengthSquared()) > tolerance ||
                    (map_verts != nullptr && (std::fabs(key.u - candidate.u) > tolerance ||
                                              std::fabs(key.v - candidate.v) > tolerance));
                if (!differs) {
                    candidate.index = key.index;
                    break;
                }
            }
            if (candidate.index < 0) {
                candidate.index = next_index++;
                keys[v].push_back(candidate);
                const Point3 p = mesh.verts[v] * offset;
                const Point3 n = Normalize(offset.VectorTransform(candidate.normal));
                part.vertices.insert(part.vertices.end(), {p.x, p.y, p.z});
                part.normals.insert(part.normals.end(), {n.x, n.y, n.z});
                if (map_verts != nullptr) {
                    part.uvs.insert(part.uvs.end(), {candidate.u, candidate.v});
                }
            }
            part.triangles.push_back(candidate.index);
        }
    }
    return part;
}

}  // namespace plain
