#include "standins/host/memory/mesh_builder.h"

#include <algorithm>
#include <cstddef>

#include "standins/host/memory/placement.h"

namespace memhost {
namespace {

template <typename T>
const T& repeated(const std::vector<T>& list, int i) {
    return list[static_cast<std::size_t>(i) % list.size()];
}

// Adds a quadrangle as two faces. Its corners are counter-clockwise.
void add_quadrangle(std::vector<Triangle>& faces, DWORD a, DWORD b, DWORD c, DWORD d) {
    faces.push_back({a, b, c});
    faces.push_back({a, c, d});
}

}  // namespace

MeshBuilder::MeshBuilder(const std::vector<Point3>& positions, const std::vector<Triangle>& faces) {
    mesh_.reset(static_cast<int>(positions.size()), static_cast<int>(faces.size()));
    std::copy(positions.begin(), positions.end(), mesh_.verts);
    for (std::size_t f = 0; f < faces.size(); ++f) {
        std::copy(faces[f].begin(), faces[f].end(), mesh_.faces[f].v);
    }
}

MeshBuilder& MeshBuilder::groups(const std::vector<DWORD>& per_face) {
    for (int f = 0; f < mesh_.numFaces; ++f) {
        mesh_.faces[f].smGroup = repeated(per_face, f);
    }
    return *this;
}

MeshBuilder& MeshBuilder::material_ids(const std::vector<MtlID>& per_face) {
    for (int f = 0; f < mesh_.numFaces; ++f) {
        mesh_.faces[f].setMatID(repeated(per_face, f));
    }
    return *this;
}

MeshBuilder& MeshBuilder::map(int channel, const std::vector<UVVert>& coordinates,
                              const std::vector<Triangle>& faces) {
    mesh_.reset_map(channel, static_cast<int>(coordinates.size()));
    std::copy(coordinates.begin(), coordinates.end(), mesh_.mapVerts(channel));
    for (int f = 0; f < mesh_.numFaces; ++f) {
        const Triangle& face = repeated(faces, f);
        std::copy(face.begin(), face.end(), mesh_.mapFaces(channel)[f].t);
    }
    return *this;
}

MeshBuilder& MeshBuilder::map_positions(int channel) {
    mesh_.reset_map(channel, mesh_.numVerts);
    for (int v = 0; v < mesh_.numVerts; ++v) {
        mesh_.mapVerts(channel)[v] = Point3(mesh_.verts[v].x, mesh_.verts[v].y, 0);
    }
    for (int f = 0; f < mesh_.numFaces; ++f) {
        const Face& face = mesh_.faces[f];
        std::copy(face.v, face.v + 3, mesh_.mapFaces(channel)[f].t);
    }
    return *this;
}

MeshBuilder& MeshBuilder::normal(int face, int corner, const Point3& normal, bool is_explicit) {
    MeshNormalSpec* normals = mesh_.GetSpecifiedNormals();
    if (!normals) {
        normals = &mesh_.reset_normals(0);
    }
    normals->set_normal_index(face, corner, normals->add_normal(normal, is_explicit));
    return *this;
}

MeshBuilder box_mesh(float x_size, float y_size, float z_size) {
    const float x = x_size / 2;
    const float y = y_size / 2;
    const float z = z_size / 2;
    std::vector<Triangle> faces;
    add_quadrangle(faces, 0, 2, 3, 1);  // bottom
    add_quadrangle(faces, 4, 5, 7, 6);  // top
    add_quadrangle(faces, 0, 1, 5, 4);  // front
    add_quadrangle(faces, 1, 3, 7, 5);  // right
    add_quadrangle(faces, 3, 2, 6, 7);  // back
    add_quadrangle(faces, 2, 0, 4, 6);  // left
    MeshBuilder box({{-x, -y, -z},
                     {x, -y, -z},
                     {-x, y, -z},
                     {x, y, -z},
                     {-x, -y, z},
                     {x, -y, z},
                     {-x, y, z},
                     {x, y, z}},
                    faces);
    return box.groups({1, 1, 2, 2, 4, 4, 8, 8, 16, 16, 32, 32})
        .material_ids({0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 5, 5});
}

MeshBuilder grid_mesh(int columns, int rows, float size) {
    const int stride = columns + 1;
    std::vector<Point3> positions;
    std::vector<UVVert> coordinates;
    for (int row = 0; row <= rows; ++row) {
        for (int column = 0; column <= columns; ++column) {
            const float u = static_cast<float>(column) / static_cast<float>(columns);
            const float v = static_cast<float>(row) / static_cast<float>(rows);
            coordinates.emplace_back(u, v, 0.0f);
            positions.emplace_back(u * size, v * size, 0.0f);
        }
    }
    std::vector<Triangle> faces;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            const DWORD corner = static_cast<DWORD>(row * stride + column);
            const DWORD above = corner + static_cast<DWORD>(stride);
            add_quadrangle(faces, corner, corner + 1, above + 1, above);
        }
    }
    return MeshBuilder(positions, faces).groups({1}).map(1, coordinates, faces);
}

MeshBuilder sphere_mesh(float radius, int segments, int rings) {
    // The positions are the poles, then the rings from the south. The coordinates are a grid with
    // one column more than there are segments, and with a whole row for each pole.
    std::vector<Point3> positions = {{0, 0, -radius}, {0, 0, radius}};
    for (int ring = 1; ring < rings; ++ring) {
        const Point3 on_meridian = Point3(0, 0, -radius) * rotation_y(-180.0 * ring / rings);
        for (int segment = 0; segment < segments; ++segment) {
            positions.push_back(on_meridian * rotation_z(360.0 * segment / segments));
        }
    }
    std::vector<UVVert> coordinates;
    for (int ring = 0; ring <= rings; ++ring) {
        for (int segment = 0; segment <= segments; ++segment) {
            coordinates.emplace_back(static_cast<float>(segment) / static_cast<float>(segments),
                                     static_cast<float>(ring) / static_cast<float>(rings), 0.0f);
        }
    }

    const auto position = [&](int ring, int segment) {
        const int around = segment % segments;
        return static_cast<DWORD>(ring == 0       ? 0
                                  : ring == rings ? 1
                                                  : 2 + (ring - 1) * segments + around);
    };
    const auto coordinate = [&](int ring, int segment) {
        return static_cast<DWORD>(ring * (segments + 1) + segment);
    };
    std::vector<Triangle> faces;
    std::vector<Triangle> map_faces;
    for (int ring = 0; ring < rings; ++ring) {
        for (int segment = 0; segment < segments; ++segment) {
            // At a pole one of the two triangles has no area and is left out.
            if (ring > 0) {
                faces.push_back({position(ring, segment), position(ring, segment + 1),
                                 position(ring + 1, segment + 1)});
                map_faces.push_back({coordinate(ring, segment), coordinate(ring, segment + 1),
                                     coordinate(ring + 1, segment + 1)});
            }
            if (ring + 1 < rings) {
                faces.push_back({position(ring, segment), position(ring + 1, segment + 1),
                                 position(ring + 1, segment)});
                map_faces.push_back({coordinate(ring, segment), coordinate(ring + 1, segment + 1),
                                     coordinate(ring + 1, segment)});
            }
        }
    }
    return MeshBuilder(positions, faces).groups({1}).map(1, coordinates, map_faces);
}

}  // namespace memhost
