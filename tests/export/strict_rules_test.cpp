// Exports from a host that is as unkind as the genuine one may be. The in-memory host itself ends a
// test that doesn't free a conversion.

#include "standins/host/memory/strict_rules.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <set>

#include "standins/host/memory/demo_scenes.h"
#include "standins/host/memory/host_text.h"
#include "standins/host/memory/image_file.h"
#include "standins/host/memory/splines.h"
#include "tests/support/exported_libraries.h"
#include "tests/support/exported_scene.h"
#include "tests/support/thrown_text.h"

namespace {

using namespace memhost;

TEST(StrictRules, AreThoseOfTheDocument) {
    std::set<std::string> rows, rules;
    std::ifstream document(VSQ_HOST_CONTRACT);
    for (std::string line; std::getline(document, line);) {
        size_t end = 0;
        for (int column = 0; column < 4; ++column) {
            end = line.find('|', end) + 1;
        }
        if (line.rfind("| `", 0) == 0) {
            rows.insert(line.substr(0, end));
        }
    }
    for (const StrictRuleInfo& info : kStrictRules) {
        rules.insert(std::string("| `") + info.name +
                     (info.keeps_answer ? "` | yes | " : "` | no | ") + info.sentence + " |");
        EXPECT_EQ(&info - kStrictRules, static_cast<int>(info.rule));
    }
    EXPECT_EQ(rows, rules);
}

TEST(StrictRules, AreReadFromAList) {
    const StrictRules rules = StrictRules::parse("all,view-null,-null-references");
    EXPECT_TRUE(rules.has(StrictRule::kNullAttributes) && rules.has(StrictRule::kViewNull));
    EXPECT_FALSE(rules.has(StrictRule::kNullReferences) || rules.has(StrictRule::kConvertNull));
    const std::string refusal = "no rule of a strict host is named 'kind' (known: all, dropped-";
    EXPECT_EQ(thrown_text<std::invalid_argument>([] {
                  StrictRules::parse("all,kind");
              }).substr(0, refusal.size()),
              refusal);
}

// The scene file and the mesh files. Only one host may exist at a time, since the rules are those
// of the newest.
template <typename Build, typename... Form>
std::string exported_by(const char* rules, Build build, Form... form) {
    SceneBuilder scene(rules);
    build(scene, form...);
    Qor::Options options(&scene.host());
    options.GeneralCurves = true;
    static const ExportedLibraries libraries;
    std::string all = exported(scene, options);
    for (const std::string& path : libraries.paths()) {
        all += path + "\n" + file_contents(path);
        std::filesystem::remove(path);  // the next export takes the same name
    }
    return all;
}

TEST(StrictHost, ChangesNoDemoScene) {
    for (const DemoScene& demo : demo_scenes()) {
        EXPECT_TRUE(exported_by("all", demo.build) == exported_by("", demo.build)) << demo.name;
    }
}

std::string image(const char* name = "Wood.PNG") {
    static const TemporaryFolder folder;
    write_png(units_from_utf8(folder / name), Image(1, 1));
    return folder / name;
}

void textured(SceneBuilder& scene, const std::string& file, int slot = kDiffuseSlot) {
    auto& material = scene.make<StandardMaterial>(L"m").diffuse(Color(1, 0, 0));
    scene.node(L"a").mesh(grid_mesh(1, 1, 1)).material(material.map(slot, &scene.bitmap(file)));
}

std::shared_ptr<SplineObject> wire() {
    return std::make_shared<SplineObject>(std::vector{polyline({{}, {1, 0, 0}})});
}

NodeBuilder hair(SceneBuilder& scene) {
    const auto object = wire();
    object->attribute(L"velmora_hair_and_fur_data").number(0, L"velmora_start_radius", 3);
    return scene.node(L"h").object(object);
}

void flat_parent(SceneBuilder& scene, bool) {
    const Matrix3 flat = scaling(1, 0, 1);
    scene.node(L"p")
        .transform(flat)
        .offset(rotation_x(30))
        .mesh(box_mesh(1, 1, 1))
        .child(L"c")
        .mesh(box_mesh(1, 1, 1))
        .motion([](TimeValue t) { return translation(0, 0, t * 0.01f); });
}

void objects_to_convert(SceneBuilder& scene, bool can_be_converted) {
    const Mesh mesh = box_mesh(1, 1, 1);
    const std::shared_ptr<Object> objects[] = {
        std::make_shared<MeshObject>(mesh),
        std::make_shared<ConvertibleObject>(mesh, Class_ID(1, 2)),
        std::make_shared<DeformingObject>(DeformingMesh(mesh).moves([](int, auto&, auto&) {})),
        wire(),
    };
    for (const auto& object : objects) {
        const auto without = std::make_shared<PlainObject>(object->SuperClassID());
        scene.node(L"a").object(can_be_converted ? object : without);
    }
}

// Each scene has two forms: a kind host must export the second as a strict host does the first.
TEST(StrictHost, LosesOnlyWhatItFails) {
    const struct {
        const char* rule;
        void (*build)(SceneBuilder& scene, bool strict);
    } cases[] = {
        {"dropped-normals",
         [](SceneBuilder& scene, bool) {
             MeshBuilder mesh = grid_mesh(1, 1, 1).normal(0, 1, {0.6f, 0, 0.8f});
             scene.animation_frames(0, 1).node(L"d").deforming(DeformingMesh(mesh).moves(
                 [](TimeValue t, const Mesh&, Mesh& moved) { moved.verts[0].z = t * 0.01f; }));
         }},
        {"singular-inverse-nan", flat_parent},
        {"singular-inverse-zero", flat_parent},
        {"cancel-at-updates",
         [](SceneBuilder& scene, bool strict) {
             scene.node(L"a").child(L"b").child(L"c").child(L"d");
             scene.host().cancel_at_poll(strict ? 1 : 2);  // noticed when the next node is reported
         }},
        {"lower-case-paths",
         [](SceneBuilder& scene, bool strict) {
             std::string path = image(strict ? "A.PNG" : "a.png");
             const auto end = strict ? path.begin() : path.end();  // Windows' folders have capitals
             std::transform(path.begin(), end, path.begin(), ::tolower);
             textured(scene, path);
         }},
        {"bitmap-open-fails",
         [](SceneBuilder& scene, bool strict) {
             textured(scene, strict ? image() : "missing.png");
         }},
        {"translated-names",
         [](SceneBuilder& scene, bool strict) {
             textured(scene, image(), strict ? kDiffuseSlot : kAmbientSlot);
             hair(scene);
         }},
        {"camera-state-fails",
         [](SceneBuilder& scene, bool strict) {
             scene.node(L"C").camera().fov(strict ? 1.0f : 0.0f);
         }},
        {"shape-fills-fewer",
         [](SceneBuilder& scene, bool strict) {
             const Point3 rest = strict ? Point3(1, 1, 0) : Point3();
             scene.node(L"L")
                 .make_object<PhotometricLight>(LightscapeLight::AREA_TYPE)
                 .shape({{-1, -1, 0}, {1, -1, 0}, rest, rest});
         }},
        {"convert-null", objects_to_convert},
        {"parent-layers-hide",
         [](SceneBuilder& scene, bool strict) {
             scene.layer(L"below").set_parent(&scene.layer(L"above"));
             scene.layer(L"above").set_hidden();
             const NodeBuilder node = scene.node(L"a").layer(L"below");
             strict ? node.mesh(box_mesh(1, 1, 1)) : node;
         }},
        {"categories-hide",
         [](SceneBuilder& scene, bool strict) {
             scene.node(L"C").camera();
             const NodeBuilder light = scene.node(L"L");
             strict ? light.object(std::make_shared<OmniLight>()) : light;
             strict ? hair(scene) : scene.node(L"h");
         }},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(exported_by(one.rule, one.build, true), exported_by("", one.build, false))
            << one.rule;
    }
}

// Hair and the picture around the scene are as large as the boxes, which nothing fills.
TEST(StrictHost, WithoutAViewGivesNoSize) {
    const TemporaryFolder folder;
    SceneBuilder scene("view-null");
    hair(scene);
    scene.node(L"C").camera();
    scene.node(L"b").mesh(box_mesh(9, 9, 9));
    scene.node(L"S").make_object<SkyLight>().map(&scene.bitmap(image()));
    SceneExporter exporter(&scene.host(), scene.host().GetRootNode(),
                           std::make_shared<Qor::Options>(&scene.host()), {});
    exporter.Run(folder / "s.vsq", false, true, false);
    exporter.Run(folder / "s.vsq", false, true, false);  // cameras have the sky of the first run
    std::string text = file_contents(folder / "s.vsq");
    for (const char* block : {"qor_envmap", "qor_curves"}) {
        text.erase(0, text.find(block));
        EXPECT_EQ(text.substr(std::min(text.find("\"radius\" "), text.size()), 12),
                  "\"radius\" 0,\n");
    }
}

}  // namespace
