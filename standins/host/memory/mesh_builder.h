#pragma once

#include <array>
#include <memory>
#include <vector>

#include "standins/host/memory/mesh_objects.h"
#include "standins/host/sdk/max.h"

namespace memhost {

using Triangle = std::array<DWORD, 3>;

/// Describes a mesh in a few lines:
///
///     MeshBuilder mesh({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, {{0, 1, 2}, {0, 2, 3}});
///     mesh.groups({1, 2}).material_ids({0, 4}).map_positions(1);
///     scene.node(L"Roof").mesh(mesh);
///
/// Faces begin without smoothing groups and with material id 0. A list that is given per face is
/// repeated when it comes to its end.
class MeshBuilder {
public:
    MeshBuilder(const std::vector<Point3>& positions, const std::vector<Triangle>& faces);

    MeshBuilder& groups(const std::vector<DWORD>& per_face);
    MeshBuilder& material_ids(const std::vector<MtlID>& per_face);

    MeshBuilder& map(int channel, const std::vector<UVVert>& coordinates,
                     const std::vector<Triangle>& faces);
    /// One coordinate for each vertex: its place in x and y.
    MeshBuilder& map_positions(int channel);

    /// A specified normal for one corner: its value counts only if it is explicit.
    MeshBuilder& normal(int face, int corner, const Point3& normal, bool is_explicit = true);

    const Mesh& mesh() const { return mesh_; }
    operator const Mesh&() const { return mesh_; }

private:
    Mesh mesh_;
};

/// Around the origin; each side has two faces, a smoothing group and a material id of its own, in
/// the order bottom, top, front, right, back, left.
MeshBuilder box_mesh(float x_size, float y_size, float z_size);

/// In the plane of x and y, from the origin on, all in smoothing group 1, with coordinates from 0
/// to 1 in channel 1.
MeshBuilder grid_mesh(int columns, int rows, float size);

/// Around the origin, all in smoothing group 1, with coordinates in channel 1 that go once around
/// in u, so that there is a seam, and from pole to pole in v.
MeshBuilder sphere_mesh(float radius, int segments, int rings);

}  // namespace memhost
