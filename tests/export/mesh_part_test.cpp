#include "plugins/3dsmax/export/mesh_part.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <optional>
#include <random>

#include "model/triangle_object.h"
#include "plugins/3dsmax/export/material_table.h"
#include "standins/host/memory/scene_builder.h"
#include "tests/support/plain_extraction.h"

namespace {

using namespace memhost;

constexpr int kChannel = 1;
const Matrix3 kIdentity;

// All NaNs count as the same, since processors don't agree on their sign and payload.
bool same_bits(const std::vector<float>& a, const std::vector<float>& b) {
    const auto same = [](float x, float y) {
        return std::memcmp(&x, &y, sizeof x) == 0 || (std::isnan(x) && std::isnan(y));
    };
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), same);
}

// Extracts every part of a mesh with both versions and compares the bits. The materials' textures
// use a channel of the mesh with `uv_transform`; their picture need not exist for that.
void expect_same_as_plain(Mesh mesh, MeshPartBuilder& builder, int materials,
                          const Matrix3& offset = kIdentity,
                          const Matrix3& uv_transform = kIdentity) {
    SceneBuilder scene;
    std::vector<Mtl*> all;
    for (int i = 0; i < materials; ++i) {
        auto& map = scene.bitmap(L"missing.png").channel(kChannel).uv_transform(uv_transform);
        all.push_back(&scene.make<StandardMaterial>(L"m").map(kDiffuseSlot, &map));
    }
    INode& node = scene.node(L"n").material(scene.make<MultiMaterial>(L"all", all)).node();
    const MaterialTable table = make_material_table(mesh, &node, 0);
    const std::vector<plain::VertexNormal> normals = plain::compute_vertex_normals(mesh);
    EXPECT_TRUE(UsesItsOwnVertices(mesh));
    const CopiedMesh copy(mesh);
    builder.begin(copy, table);
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
        builder.keep_storage_of(object);
    }
}

// A mesh with every special case: few positions, so that faces share vertices and degenerate; all
// kinds of groups; several materials; coordinates and explicit normals that nearly match; and NaN
// and infinity.
Mesh random_mesh(std::mt19937& random) {
    const auto below = [&random](unsigned limit) { return static_cast<DWORD>(random() % limit); };
    const auto number = [&] {
        constexpr float kSpecials[] = {NAN, INFINITY, -INFINITY, 0.0f, -0.0f, 1e30f};
        return below(200) == 0 ? kSpecials[below(6)]
                               : static_cast<float>(below(2001)) / 1000.0f - 1.0f;
    };
    const auto nearly = [&](float value) { return value + static_cast<float>(below(5)) * 5.0e-8f; };
    const DWORD vertices = 1 + below(30);
    std::vector<Point3> positions(vertices);
    for (Point3& position : positions) {
        position = Point3(number(), number(), number());
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
        std::vector<UVVert> coordinates(20);
        for (UVVert& coordinate : coordinates) {
            const float u = below(2) == 0 ? 0.5f : number();
            coordinate = UVVert(nearly(u), nearly(0.25f), number());
        }
        std::vector<Triangle> map_faces(faces.size());
        for (Triangle& face : map_faces) {
            face = {below(20), below(20), below(20)};
        }
        mesh.map(kChannel, coordinates, map_faces);
    }
    const int corners = below(3) == 0 ? 3 * static_cast<int>(faces.size()) : 0;
    for (int i = 0; i < corners; ++i) {
        if (below(2) == 0) {
            const Point3 normal(nearly(number()), nearly(0.7f), number());
            mesh.normal(i / 3, i % 3, normal, below(4) != 0);
        }
    }
    return mesh;
}

TEST(MeshPart, EqualsThePlainExtractionOnRandomMeshes) {
    std::mt19937 random(1);
    MeshPartBuilder builder;  // used for all meshes: none may affect the next
    for (int i = 0; i < 3000 && !HasFailure(); ++i) {
        Matrix3 offset = rotation_x(static_cast<double>(random() % 360)) * translation(1, 2, 3);
        if (i % 5 == 0) {
            offset = scaling(-1, 2, i % 2 == 0 ? 0.0f : 3.0f);
        }
        const Matrix3 uv_transform = i % 2 == 0 ? kIdentity : scaling(3, -2, 1);
        expect_same_as_plain(random_mesh(random), builder, 1 + i % 5, offset, uv_transform);
        ASSERT_FALSE(HasFailure()) << "mesh " << i;
    }
}

// A vertex that many faces share, with keys that are close together. The counts are on both sides
// of the limit from which its output vertices are found through a hash table.
TEST(MeshPart, EqualsThePlainExtractionAtCrowdedVertices) {
    std::mt19937 random(2);
    MeshPartBuilder builder;
    for (const int count : {31, 32, 33, 34, 200, 3000}) {
        for (const float spread : {2.0f, 1e-2f, 1e-3f, 1e3f, 1e11f}) {
            std::uniform_real_distribution<float> place(-spread, spread);
            std::vector<Point3> rim = {{0, 0, 0}};
            std::vector<Triangle> faces;
            std::vector<Triangle> map_faces;
            std::vector<UVVert> coordinates;
            std::vector<Point3> normals;
            // Each normal and coordinate comes twice; the second one must find the first.
            const DWORD distinct = static_cast<DWORD>(count / 2 + 1);
            for (DWORD i = 0; i < static_cast<DWORD>(count); ++i) {
                rim.emplace_back(place(random), place(random), place(random));
                faces.push_back({0, 1 + static_cast<DWORD>(random()) % (i + 1), i + 1});
                map_faces.push_back({i % distinct, i % distinct, i % distinct});
                coordinates.emplace_back(place(random) * (i % 2 == 0 ? 1e-4f : 0.9f),
                                         i % 11 == 3   ? INFINITY
                                         : i % 97 == 5 ? NAN
                                                       : 0.5f,
                                         0.0f);
                normals.emplace_back(place(random), 1.0f, place(random));
                if (i % 25 == 7) {
                    constexpr float kSpecials[] = {NAN, INFINITY, -INFINITY, NAN};
                    normals.back()[static_cast<int>(i / 25 % 3)] = kSpecials[i / 25 % 4];
                }
            }
            MeshBuilder mesh(rim, faces);
            mesh.map(kChannel, coordinates, map_faces);
            for (int f = 0; f < count; ++f) {
                mesh.normal(f, 0, normals[static_cast<DWORD>(f) % distinct]);
            }
            expect_same_as_plain(mesh, builder, 1);
            expect_same_as_plain(mesh, builder, 0);
        }
    }
}

// The time must be linear in the faces at a vertex, not quadratic, and the stack must not overflow.
TEST(MeshPart, HandlesAnyNumberOfFacesAtAVertex) {
    constexpr DWORD kFaces = 100000;
    // Infinite normals and NaN match by their coordinates alone.
    for (const DWORD groups : {0, 32}) {
        for (const std::optional<float> normal_step :
             {std::optional<float>(), {1.0f}, {INFINITY}, {NAN}}) {
            std::vector<Point3> rim(kFaces + 1);
            std::vector<UVVert> places(kFaces);
            std::vector<Triangle> faces;
            std::vector<Triangle> map_faces;
            std::vector<DWORD> face_groups;
            for (DWORD i = 0; i < kFaces; ++i) {
                rim[i + 1] = Point3(1.0f, static_cast<float>(i), static_cast<float>(i % 7));
                faces.push_back({0, i == 0 ? kFaces : i, i + 1});
                face_groups.push_back(groups == 0 ? 0 : 1u << (i % groups));
                places[i].x = static_cast<float>(i);
                map_faces.push_back({i, i, i});
            }
            Mesh mesh =
                MeshBuilder(rim, faces).groups(face_groups).map(kChannel, places, map_faces);
            MeshNormalSpec* spec = normal_step ? &mesh.reset_normals(kFaces) : nullptr;
            for (int f = 0; spec != nullptr && f < mesh.numFaces; ++f) {
                spec->Normal(f) = Point3(*normal_step * static_cast<float>(f + 1), 1.0f, 2.0f);
                spec->set_normal_index(f, 0, f);
            }
            SceneBuilder scene;
            auto& map = scene.bitmap(L"missing.png").channel(kChannel);
            INode& node = scene.node(L"n")
                              .material(scene.make<StandardMaterial>(L"m").map(kDiffuseSlot, &map))
                              .node();
            const MaterialTable table = make_material_table(mesh, &node, 0);
            MeshPartBuilder builder;
            const CopiedMesh copy(mesh);
            builder.begin(copy, table);
            qor::TriangleObject object("n");
            EXPECT_TRUE(builder.build(0, kIdentity, object));
            EXPECT_EQ(object.triangles().size(), size_t{3} * kFaces);
        }
    }
}

}  // namespace
