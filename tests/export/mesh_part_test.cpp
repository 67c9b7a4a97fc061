#include "plugins/3dsmax/export/mesh_part.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>

#include "model/triangle_object.h"
#include "plugins/3dsmax/export/material_table.h"
#include "standins/host/memory/scene_builder.h"
#include "tests/support/plain_extraction.h"

namespace {

using memhost::MeshBuilder;
using memhost::SceneBuilder;
using memhost::StandardMaterial;
using memhost::Triangle;

constexpr int kChannel = 1;
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

const Matrix3 kIdentity;

// What is no number is the same whatever its sign and payload, on which processors don't agree.
bool same_bits(const std::vector<float>& a, const std::vector<float>& b) {
    const auto same = [](float x, float y) {
        return std::memcmp(&x, &y, sizeof x) == 0 || (std::isnan(x) && std::isnan(y));
    };
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), same);
}

// Materials with texture coordinates in a channel of the mesh, moved as `uv_transform` says. There
// need be no picture for the coordinates to be taken along.
Mtl& mapped_materials(SceneBuilder& scene, int count, const Matrix3& uv_transform) {
    std::vector<Mtl*> materials;
    for (int i = 0; i < count; ++i) {
        auto& map = scene.bitmap(L"missing.png").channel(kChannel).uv_transform(uv_transform);
        materials.push_back(&scene.make<StandardMaterial>(L"m").map(memhost::kDiffuseSlot, &map));
    }
    return scene.make<memhost::MultiMaterial>(L"all", materials);
}

// Extracts every part of a mesh with both versions and compares them bit by bit. Gives the vertices
// of all parts.
size_t expect_same_as_plain(Mesh mesh, SceneBuilder& scene, Mtl& material, const Matrix3& offset,
                            MeshPartBuilder& builder) {
    INode& node = scene.node(L"n").material(material).node();
    const MaterialTable table = make_material_table(mesh, &node, 0);
    const std::vector<plain::VertexNormal> normals = plain::compute_vertex_normals(mesh);
    EXPECT_TRUE(UsesItsOwnVertices(mesh));
    builder.begin(mesh, table);
    size_t vertices = 0;
    for (int part = 0; builder.has_part(part); ++part) {
        const MaterialEntry& entry = *table.entry(part);
        const plain::Part wanted = plain::extract(
            mesh, normals, offset, entry.diffuse_channel, entry.uv_transform, [&](int f) {
                const int slot = mesh.faces[f].getMatID() % table.slot_count();
                return table.entry_of_slot(slot) == static_cast<unsigned>(part);
            });
        qor::TriangleObject object("n");
        EXPECT_TRUE(builder.build(part, offset, object));
        EXPECT_EQ(object.triangles(), wanted.triangles) << "part " << part;
        EXPECT_TRUE(same_bits(object.vertices(), wanted.vertices)) << "part " << part;
        EXPECT_TRUE(same_bits(object.normals(), wanted.normals)) << "part " << part;
        EXPECT_TRUE(same_bits(object.uv_tex(), wanted.uvs)) << "part " << part;
        vertices += wanted.vertices.size() / 3;
        builder.keep_storage_of(object);
    }
    return vertices;
}

// A mesh in which everything happens: few places, so that vertices are shared and faces degenerate,
// groups of all kinds, several materials, coordinates and explicit normals that nearly match, and
// numbers that are none.
Mesh random_mesh(std::mt19937& random) {
    const auto below = [&random](unsigned limit) { return static_cast<DWORD>(random() % limit); };
    const auto number = [&] {
        constexpr float kSpecials[] = {kNan, kInfinity, -kInfinity, 0.0f, -0.0f, 1e30f};
        return below(200) == 0 ? kSpecials[below(6)]
                               : static_cast<float>(below(2001)) / 1000.0f - 1.0f;
    };
    const auto nearly = [&](float value) { return value + static_cast<float>(below(5)) * 5.0e-8f; };
    const DWORD vertices = 1 + below(30);
    std::vector<Point3> positions;
    for (DWORD i = 0; i < vertices; ++i) {
        positions.emplace_back(number(), number(), number());
    }
    std::vector<Triangle> faces(1 + below(200));
    std::vector<DWORD> groups;
    std::vector<MtlID> ids;
    for (Triangle& face : faces) {
        face = {below(vertices), below(vertices), below(vertices)};
        const DWORD kinds[] = {
            0, 1, 1u << below(32), 1u << below(3), below(8), static_cast<DWORD>(random())};
        groups.push_back(kinds[below(6)]);
        ids.push_back(static_cast<MtlID>(below(7)));
    }
    MeshBuilder mesh(positions, faces);
    mesh.groups(groups).material_ids(ids);

    if (below(4) != 0) {
        std::vector<UVVert> coordinates;
        for (DWORD i = 0; i < 20; ++i) {
            const float u = below(2) == 0 ? 0.5f : number();
            coordinates.emplace_back(nearly(u), nearly(0.25f), number());
        }
        std::vector<Triangle> map_faces;
        for (size_t f = 0; f < faces.size(); ++f) {
            map_faces.push_back({below(20), below(20), below(20)});
        }
        mesh.map(kChannel, coordinates, map_faces);
    }
    if (below(3) == 0) {
        for (size_t f = 0; f < faces.size(); ++f) {
            for (int corner = 0; corner < 3; ++corner) {
                if (below(2) == 0) {
                    mesh.normal(static_cast<int>(f), corner,
                                Point3(nearly(number()), nearly(0.7f), number()), below(4) != 0);
                }
            }
        }
    }
    return mesh;
}

TEST(MeshPart, EqualsThePlainExtractionOnRandomMeshes) {
    std::mt19937 random(1);
    MeshPartBuilder builder;  // one for all: nothing of a mesh may reach the next
    for (int i = 0; i < 3000 && !HasFailure(); ++i) {
        SceneBuilder scene;
        Matrix3 offset = memhost::rotation_x(static_cast<double>(random() % 360)) *
                         memhost::translation(1, 2, 3);
        if (i % 5 == 0) {
            offset = memhost::scaling(-1, 2, i % 2 == 0 ? 0.0f : 3.0f);
        }
        const Matrix3 uv_transform = i % 2 == 0 ? kIdentity : memhost::scaling(3, -2, 1);
        Mtl& material = mapped_materials(scene, 1 + i % 5, uv_transform);
        expect_same_as_plain(random_mesh(random), scene, material, offset, builder);
        ASSERT_FALSE(HasFailure()) << "mesh " << i;
    }
}

// A vertex that very many faces share, on both sides of where its output vertices are found in
// another way, with keys that lie close together.
TEST(MeshPart, EqualsThePlainExtractionAtCrowdedVertices) {
    std::mt19937 random(2);
    MeshPartBuilder builder;
    for (const int count : {31, 32, 33, 34, 200, 3000}) {
        for (const float spread : {2.0f, 1e-2f, 1e-3f, 1e3f, 1e11f}) {
            std::uniform_real_distribution<float> place(-spread, spread);
            std::vector<Point3> rim;
            std::vector<Triangle> faces;
            std::vector<UVVert> coordinates;
            rim.emplace_back(0.0f, 0.0f, 0.0f);
            for (int i = 0; i < count; ++i) {
                rim.emplace_back(place(random), place(random), place(random));
                faces.push_back({0, static_cast<DWORD>(1 + random() % static_cast<unsigned>(i + 1)),
                                 static_cast<DWORD>(i + 1)});
                const float v = i % 11 == 3 ? kInfinity : 0.5f;
                coordinates.emplace_back(place(random) * (i % 2 == 0 ? 1e-4f : 0.9f), v, 0.0f);
            }
            MeshBuilder mesh(rim, faces);
            mesh.map(kChannel, coordinates, std::vector<Triangle>(faces.size(), {0, 1, 2}));
            // Each normal and coordinate comes twice, the second time to be found again.
            const int distinct = count / 2 + 1;
            std::vector<Point3> normals;
            for (int i = 0; i < distinct; ++i) {
                normals.emplace_back(place(random), 1.0f, place(random));
                if (i % 50 == 7) {
                    normals.back().x = i % 100 == 7 ? kNan : kInfinity;
                }
            }
            std::vector<Triangle> map_faces;
            for (int f = 0; f < count; ++f) {
                const DWORD any = static_cast<DWORD>(f % distinct);
                map_faces.push_back({any, any, any});
                mesh.normal(f, 0, normals[any]);
            }
            mesh.map(kChannel, coordinates, map_faces);
            SceneBuilder scene;
            expect_same_as_plain(mesh, scene, mapped_materials(scene, 1, kIdentity), kIdentity,
                                 builder);
            SceneBuilder unmapped;
            expect_same_as_plain(mesh, unmapped, unmapped.make<StandardMaterial>(L"m"), kIdentity,
                                 builder);
        }
    }
}

// A side for each group, one seam, and normals that a group joins only afterwards.
TEST(MeshPart, SplitsVerticesWhereNormalsOrCoordinatesDo) {
    const MeshBuilder tent = MeshBuilder({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {-1, 0, 1}, {0, -1, 1}},
                                         {{0, 1, 2}, {0, 2, 3}, {0, 3, 4}});
    const struct {
        const char* name;
        MeshBuilder mesh;
        size_t vertices;
    } meshes[] = {
        {"box with a group for each side", memhost::box_mesh(1, 2, 3), 24},
        {"grid in one group", memhost::grid_mesh(4, 3, 1), 20},
        {"faces without groups share the last normal", MeshBuilder(tent).groups({0, 0, 0}), 5},
        {"two groups", MeshBuilder(tent).groups({1, 1, 2}), 7},
        {"two groups that the third face joins at the top", MeshBuilder(tent).groups({1, 2, 3}), 6},
    };
    MeshPartBuilder builder;
    for (const auto& mesh : meshes) {
        SceneBuilder scene;
        EXPECT_EQ(expect_same_as_plain(mesh.mesh, scene, scene.make<StandardMaterial>(L"m"),
                                       kIdentity, builder),
                  mesh.vertices)
            << mesh.name;
    }
}

TEST(MeshPart, RefusesWhatPointsPastTheEnd) {
    SceneBuilder scene;
    INode& node = scene.node(L"n").material(mapped_materials(scene, 1, kIdentity)).node();
    MeshPartBuilder builder;

    for (const DWORD vertex : {DWORD{3}, DWORD{0x80000000}, DWORD{0xffffffff}}) {
        Mesh mesh = MeshBuilder({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 2}});
        mesh.faces[0].v[1] = vertex;
        EXPECT_FALSE(UsesItsOwnVertices(mesh)) << vertex;
    }

    Mesh mesh = memhost::grid_mesh(2, 2, 1);
    mesh.mapFaces(kChannel)[7].t[2] = static_cast<DWORD>(mesh.getNumMapVerts(kChannel));
    const MaterialTable table = make_material_table(mesh, &node, 0);
    builder.begin(mesh, table);
    qor::TriangleObject object("n");
    EXPECT_FALSE(builder.build(0, kIdentity, object));
    EXPECT_EQ(object.triangles().size(), 24u);
    EXPECT_TRUE(object.uv_tex().empty());
}

// The time may grow with the faces at a vertex, not with their square, and no stack is used up.
TEST(MeshPart, TakesAnyNumberOfFacesAtAVertex) {
    constexpr int kFaces = 100000;
    for (const int groups : {0, 32}) {
        for (const bool explicit_normals : {false, true}) {
            std::vector<Point3> rim = {{0, 0, 0}};
            std::vector<Triangle> faces;
            std::vector<DWORD> face_groups;
            for (int i = 0; i < kFaces; ++i) {
                rim.emplace_back(1.0f, static_cast<float>(i), static_cast<float>(i % 7));
                faces.push_back(
                    {0, static_cast<DWORD>(i == 0 ? kFaces : i), static_cast<DWORD>(i + 1)});
                face_groups.push_back(groups == 0 ? 0 : 1u << (i % groups));
            }
            Mesh mesh = MeshBuilder(rim, faces).groups(face_groups);
            if (explicit_normals) {
                MeshNormalSpec& spec = mesh.reset_normals(kFaces);
                for (int f = 0; f < kFaces; ++f) {
                    spec.Normal(f) = Point3(static_cast<float>(f), 1, 2);
                    spec.set_normal_index(f, 0, f);
                }
            }
            SceneBuilder scene;
            INode& node = scene.node(L"n").node();
            const MaterialTable table = make_material_table(mesh, &node, 0);
            MeshPartBuilder builder;
            builder.begin(mesh, table);
            qor::TriangleObject object("n");
            EXPECT_TRUE(builder.build(0, kIdentity, object));
            EXPECT_EQ(object.triangles().size(), size_t{3} * kFaces);
        }
    }
}

}  // namespace
