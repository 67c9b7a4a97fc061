#include <cmath>
#include <cstdint>
#include <numeric>
#include <stdexcept>

#include <gtest/gtest.h>

#include "tests/support/exported_meshes.h"
#include "tests/support/exported_scene.h"
#include "tools/vsqinfo/vsq_reader.h"

namespace {

using namespace memhost;

using Floats = std::vector<float>;

const Class_ID kPrimitive(0x10, 0);
const std::vector<Point3> kCorners = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};

// Equal faces with the material ids 0, 1, 2 and so on.
MeshBuilder stack_mesh(size_t faces) {
    std::vector<MtlID> ids(faces);
    std::iota(ids.begin(), ids.end(), MtlID{0});
    return MeshBuilder(kCorners, std::vector<Triangle>(faces, {0, 1, 2})).material_ids(ids);
}

// A multi-material of `count` textured materials with the same name.
Mtl& materials(SceneBuilder& scene, size_t count) {
    std::vector<Mtl*> subs;
    for (size_t i = 0; i < count; ++i) {
        auto& map = scene.bitmap(L"missing.png");
        subs.push_back(&scene.make<StandardMaterial>(L"Twin").map(kDiffuseSlot, &map));
    }
    return scene.make<MultiMaterial>(L"all", subs);
}

struct Case {
    const char* name;
    Class_ID class_id;
    Mesh mesh;
    size_t materials;
    std::string objects;  // the number of triangles of each, with "uv" if it has coordinates
    bool deforms = false;
};

std::string summary_of(const std::vector<ExportedMesh>& meshes, const std::string& material) {
    std::string summary;
    for (const ExportedMesh& mesh : meshes) {
        EXPECT_EQ(mesh.normals.size(), mesh.vertices.size());
        EXPECT_EQ(mesh.name, "\"Node\"");
        EXPECT_EQ(mesh.material, material);
        summary += std::to_string(mesh.triangles.size() / 3) + (mesh.uvs.empty() ? " " : "uv ");
    }
    return summary;
}

// A second node after the case's own shows that the export goes on. The meshes of both must be
// freed.
TEST(MeshExport, WritesOnlyUsableMeshes) {
    const Mesh two = stack_mesh(2);
    const Mesh no_numbers =
        MeshBuilder({{NAN, 0, 0}, {INFINITY, 0, -INFINITY}, {0, 0, 0}, {0, 1, 0}},
                    {{0, 1, 2}, {2, 2, 2}, {2, 3, 3}, {1, 2, 3}});
    const Mesh half_mapped = stack_mesh(2).map(1, kCorners, {{0, 1, 2}, {0, 1, 3}});
    std::string hundred_and_thirty = "2 2 ";  // the ids share 128 slots
    for (int i = 0; i < 126; ++i) {
        hundred_and_thirty += "1 ";
    }
    const Case cases[] = {
        {"a primitive", kPrimitive, two, 0, "2 "},
        {"a bone", BONE_OBJ_CLASSID, two, 0, "2 "},
        {"empty", kPrimitive, MeshBuilder({}, {}), 0, ""},
        {"no faces", kPrimitive, MeshBuilder(kCorners, {}), 0, ""},
        {"no vertices", kPrimitive, MeshBuilder({}, {{0, 0, 0}}), 0, ""},
        {"a face past the end", kPrimitive, MeshBuilder(kCorners, {{0, 1, 3}}), 0, ""},
        {"a face far past it", kPrimitive, MeshBuilder(kCorners, {{~0u, 1, 2}}), 0, ""},
        {"part with a face past the coordinates", kPrimitive, half_mapped, 1, "2 "},
        {"one such part of two", kPrimitive, half_mapped, 2, "1uv 1 "},
        {"NaN, infinity and degenerate faces", kPrimitive, no_numbers, 0, "4 "},
        {"ids past the materials", kPrimitive, stack_mesh(5), 2, "3 2 "},
        {"ids past the slots", kPrimitive, stack_mesh(130), 130, hundred_and_thirty},
        {"deforming, wanted as still", kPrimitive, two, 0, "2 ", true},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.name);
        SceneBuilder scene;
        Qor::Options options(&scene.host());
        const NodeBuilder node = scene.node(L"Node").wire(1, 2, 3);
        auto& object = node.make_object<ConvertibleObject>(one.mesh, one.class_id);
        if (one.materials > 0) {
            node.material(materials(scene, one.materials));
        }
        if (one.deforms) {
            object.set_validity(Interval(0, 0));
            options.Deformable = false;
        }
        scene.node(L"Next").make_object<ConvertibleObject>(two, kPrimitive);

        const std::string text = exported(scene, options);
        EXPECT_EQ(ConvertibleObject::live_conversions(), 0);
        std::vector<ExportedMesh> meshes = ExportedMeshReader::read(text);
        ASSERT_FALSE(meshes.empty());
        EXPECT_EQ(meshes.back().name, "\"Next\"");
        meshes.pop_back();
        EXPECT_EQ(summary_of(meshes,
                             one.materials > 0 ? "\"Twin\"" : "\"Node - EmptyMaterial#0 : 1:2:3\""),
                  one.objects);
    }
}

TEST(MeshExport, FreesItsMeshIfAMaterialFails) {
    SceneBuilder scene;
    auto& material = scene.make<StandardMaterial>(L"m").diffuse(
        [](TimeValue) -> Color { throw std::runtime_error("no colour"); });
    scene.node(L"Node")
        .object(std::make_shared<ConvertibleObject>(stack_mesh(1), kPrimitive))
        .material(material);
    EXPECT_THROW(exported(scene), std::runtime_error);
    EXPECT_EQ(ConvertibleObject::live_conversions(), 0);
}

// Two sides meet at a hard edge, so its vertices split. The object's offset scales only positions.
TEST(MeshExport, WritesOneBlockByteForByte) {
    SceneBuilder scene;
    const MeshBuilder mesh =
        MeshBuilder({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, {{0, 1, 2}, {0, 2, 3}})
            .groups({1, 2})
            .map_positions(1);
    auto& map = scene.bitmap(L"missing.png").tiling(0.5f, 1, 3, 0);
    auto& material = scene.make<StandardMaterial>(L"Stone")
                         .diffuse({0.5f, 0.25f, 1})
                         .specular({1, 0.5f, 0})
                         .shininess(0.5f)
                         .map(kDiffuseSlot, &map);
    scene.node(L"Box\u00e9").at(1, 2, 3).offset(scaling(2, 2, 2)).mesh(mesh).material(material);
    const Floats vertices = {0, 0, 0, 2, 0, 0, 0, 2, 0, 0, 0, 0, 0, 2, 0, 0, 0, 2};
    const Floats normals = {0, 0, 1, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0, 0, 1, 0, 0};
    EXPECT_EQ(exported_nodes(scene),
              "\ngroup xX426f78e9 {\nobject xX426f78e9 {\nflags 0\ngeometry \"triangles\" {\n" +
                  array_text("vertices", 'c', vertices) +
                  array_text("triangles", 'i', std::vector<std::int32_t>{0, 1, 2, 3, 4, 5}) +
                  array_text("uv_tex", 'f', Floats{3, 0, 3.5f, 0, 3, 1, 3, 0, 3, 1, 3, 0}) +
                  array_text("normals", 'c', normals) +
                  "}\nmaterial \"Stone\" {\n#define shader 1 qor_plastic_simple {\n"
                  "\"diffuse\" 0.5 0.25 1,\n\"specular\" 0.5 0.25 0,\n\"roughness\" 0,\n}\n"
                  "surface 1\nflags 4096\n}\n}\ntransform 1 0 0 0 0 1 0 0 0 0 1 0 1 2 3 1\n}\n");
}

}  // namespace
