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
/// Faces start without smoothing groups and with material id 0. A per-face list that is too short
/// is repeated.
class MeshBuilder {
public:
    MeshBuilder(const std::vector<Point3>& positions, const std::vector<Triangle>& faces);

    MeshBuilder& groups(const std::vector<DWORD>& per_face);
    MeshBuilder& material_ids(const std::vector<MtlID>& per_face);

    MeshBuilder& map(int channel, const std::vector<UVVert>& coordinates,
                     const std::vector<Triangle>& faces);
    /// The x and y of each vertex are its coordinates.
    MeshBuilder& map_positions(int channel);

    /// Specifies the normal of one corner. Its value counts only if it is explicit.
    MeshBuilder& normal(int face, int corner, const Point3& normal, bool is_explicit = true);

    const Mesh& mesh() const { return mesh_; }
    operator const Mesh&() const { return mesh_; }

private:
    Mesh mesh_;
};

/// A box centred on the origin. Each side has two faces, its own smoothing group and its own
/// material id. The sides are in the order bottom, top, front, right, back, left.
MeshBuilder box_mesh(float x_size, float y_size, float z_size);

/// A square in the xy plane with a corner at the origin. All faces are in smoothing group 1.
/// Channel 1 has coordinates from 0 to 1.
MeshBuilder grid_mesh(int columns, int rows, float size);

/// A sphere centred on the origin. All faces are in smoothing group 1. The coordinates in channel 1
/// go once around in u, with a seam, and from pole to pole in v.
MeshBuilder sphere_mesh(float radius, int segments, int rings);

}  // namespace memhost
