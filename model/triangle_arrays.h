#pragma once

#include <vector>

namespace qor {

/// The data of a triangle mesh, flat as they go into the scene.
///
/// An attribute without indices of its own runs parallel to `vertices`, one entry per vertex. With
/// indices it has one for each corner of a triangle.
struct TriangleArrays {
    std::vector<float> vertices;      ///< three per vertex
    std::vector<int> triangles;       ///< three vertex indices per triangle
    std::vector<float> uv_tex;        ///< two per texture coordinate
    std::vector<int> triangles_uv;    ///< optional; indices into `uv_tex`
    std::vector<float> normals;       ///< three per normal
    std::vector<int> triangles_norm;  ///< optional; indices into `normals`
    std::vector<float> vcolors;       ///< three per vertex, if there are any

    /// Empties the arrays and keeps their memory for the next mesh.
    void clear() {
        vertices.clear();
        triangles.clear();
        uv_tex.clear();
        triangles_uv.clear();
        normals.clear();
        triangles_norm.clear();
        vcolors.clear();
    }
};

}  // namespace qor
