#include <algorithm>
#include <cmath>
#include <limits>

#include "fuzz/fuzz_input.h"
#include "model/triangle_object.h"
#include "plugins/3dsmax/export/material_table.h"
#include "plugins/3dsmax/export/mesh_part.h"
#include "standins/host/memory/scene_builder.h"
#include "tests/support/plain_extraction.h"

namespace {

using namespace memhost;

// One that others share, one near to others, or any bits.
float number(FuzzInput& input) {
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    constexpr float kCommon[] = {0.0f, -0.0f, 1.0f, 0.5f, NAN, kInfinity, -kInfinity, 1e30f};
    const unsigned kind = input.below(16);
    if (kind < 8) {
        return kCommon[kind];
    }
    if (kind < 15) {
        return 0.7f + static_cast<float>(input.below(8)) * 5.0e-8f;
    }
    return input.take<float>();
}

// Every second one is in a row of points, of which neighbours match as normals and others don't.
Point3 point(FuzzInput& input) {
    if (input.below(2) == 0) {
        return Point3(static_cast<float>(input.take<std::uint8_t>()) * 2.0e-4f, 1.0f, 0.0f);
    }
    const float x = number(input);
    const float y = number(input);
    return Point3(x, y, number(input));
}

Mesh mesh_from(FuzzInput& input) {
    std::vector<Point3> places(1 + input.below(4));  // so few that many faces meet
    for (Point3& place : places) {
        place = point(input);
    }
    std::vector<UVVert> coordinates(1 + input.below(64));
    for (UVVert& coordinate : coordinates) {
        coordinate = point(input);
    }
    const auto triangle = [&input](std::size_t count) {
        const auto corner = [&] { return DWORD{input.below(static_cast<unsigned>(count))}; };
        const DWORD first = corner();
        const DWORD second = corner();
        return Triangle{first, second, corner()};
    };
    std::vector<Triangle> faces;
    std::vector<Triangle> map_faces;
    std::vector<DWORD> groups;
    std::vector<MtlID> ids;
    for (unsigned left = 1 + input.take<std::uint8_t>(); left > 0; --left) {
        faces.push_back(triangle(places.size()));
        map_faces.push_back(triangle(coordinates.size()));
        groups.push_back(input.below(2) == 0 ? input.below(4) : input.take<DWORD>());
        ids.push_back(static_cast<MtlID>(input.below(4)));
    }
    MeshBuilder mesh(places, faces);
    mesh.groups(groups).material_ids(ids);
    if (input.below(2) == 0) {
        mesh.map(1, coordinates, map_faces);
    }
    for (unsigned left = input.take<std::uint8_t>(); left > 0; --left) {
        const int face = static_cast<int>(input.below(static_cast<unsigned>(faces.size())));
        const int corner = static_cast<int>(input.below(3));
        mesh.normal(face, corner, point(input), input.below(4) != 0);
    }
    return mesh;
}

// Any NaN is as good as another.
bool same_bits(const std::vector<float>& a, const std::vector<float>& b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](float x, float y) {
               return std::memcmp(&x, &y, sizeof x) == 0 || (std::isnan(x) && std::isnan(y));
           });
}

}  // namespace

// The fast extraction of a mesh gives the bits of the plain one.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static MeshPartBuilder builder;  // its storage goes from one mesh to the next
    FuzzInput input(data, size);
    const unsigned materials = 1 + input.below(4);
    Mesh mesh = mesh_from(input);
    SceneBuilder scene;
    std::vector<Mtl*> all;
    for (unsigned i = 0; i < materials; ++i) {
        auto& map = scene.bitmap(L"missing.png").tiling(number(input), 1);
        all.push_back(&scene.make<StandardMaterial>(L"m").map(kDiffuseSlot, &map));
    }
    INode& node = scene.node(L"n").material(scene.make<MultiMaterial>(L"all", all)).node();
    const MaterialTable table = make_material_table(mesh, &node, 0);
    const auto normals = plain::compute_vertex_normals(mesh);
    const CopiedMesh copy(mesh);
    builder.begin(copy, table);
    for (int part = 0; builder.has_part(part); ++part) {
        const MaterialEntry& entry = *table.entry(part);
        const plain::Part wanted = plain::extract(
            mesh, normals, Matrix3(), entry.diffuse_channel, entry.uv_transform, [&](int f) {
                return table.entry_of_face(mesh.faces[f]) == static_cast<unsigned>(part);
            });
        qor::TriangleObject object("n");
        builder.build(part, Matrix3(), object);
        require(object.triangles() == wanted.triangles, "the triangles");
        require(same_bits(object.vertices(), wanted.vertices), "the vertices");
        require(same_bits(object.normals(), wanted.normals), "the normals");
        require(same_bits(object.uv_tex(), wanted.uvs), "the texture coordinates");
        builder.keep_storage_of(object);
    }
    return 0;
}
