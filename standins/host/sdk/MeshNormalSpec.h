#pragma once

#include <cstddef>
#include <vector>

#include "standins/host/sdk/point3.h"

/// Normals that take precedence over those from the mesh's smoothing groups. Each corner of a face
/// can refer to one of them by its id. Only an explicit normal has a value that counts; any other
/// is merely fixed to its corners.
class MeshNormalSpec {
public:
    /// Can be less than the number of faces of the mesh.
    int GetNumFaces() const { return static_cast<int>(ids_.size() / 3); }
    int GetNumNormals() const { return static_cast<int>(normals_.size()); }

    /// Negative for a corner without a normal.
    int GetNormalIndex(int face, int corner) {
        return face < GetNumFaces() ? ids_[place(face, corner)] : -1;
    }
    /// The corner must have a normal. The result needn't be of unit length.
    Point3& GetNormal(int face, int corner) { return Normal(ids_[place(face, corner)]); }
    Point3& Normal(int id) const { return normals_[static_cast<std::size_t>(id)]; }
    bool GetNormalExplicit(int id) const { return is_explicit_[static_cast<std::size_t>(id)] != 0; }

    /// Removes all normals and makes explicit new ones, which no corner refers to yet.
    void reset(int faces, int normals) {
        ids_.assign(static_cast<std::size_t>(faces) * 3, -1);
        normals_.assign(static_cast<std::size_t>(normals), Point3());
        is_explicit_.assign(static_cast<std::size_t>(normals), 1);
    }
    void set_normal_index(int face, int corner, int id) { ids_[place(face, corner)] = id; }
    /// Returns the new normal's id.
    int add_normal(const Point3& normal, bool is_explicit) {
        normals_.push_back(normal);
        is_explicit_.push_back(is_explicit ? 1 : 0);
        return GetNumNormals() - 1;
    }

private:
    static std::size_t place(int face, int corner) {
        return static_cast<std::size_t>(face) * 3 + static_cast<std::size_t>(corner);
    }

    std::vector<int> ids_;  // three per face
    mutable std::vector<Point3> normals_;
    std::vector<unsigned char> is_explicit_;  // one per normal
};
