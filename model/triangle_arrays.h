#pragma once

#include <vector>

namespace qor {

/// The data of a triangle mesh, in the flat form that goes into the scene.
///
/// An attribute without indices has one entry per vertex, in the order of `vertices`. With indices,
/// it has one index for each corner of each triangle.
struct TriangleArrays {
    std::vector<float> vertices;      ///< three per vertex
    std::vector<int> triangles;       ///< three vertex indices per triangle
    std::vector<float> uv_tex;        ///< two per texture coordinate
    std::vector<int> triangles_uv;    ///< optional; indices into `uv_tex`
    std::vector<float> normals;       ///< three per normal
    std::vector<int> triangles_norm;  ///< optional; indices into `normals`
    std::vector<float> vcolors;       ///< optional; three per vertex

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
