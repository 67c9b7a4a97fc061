// Runs commands on scenes that each lose one thing, and reads the reports that they hand over.

#include <gtest/gtest.h>

#include <cmath>
#include <nlohmann/json.hpp>
#include <numeric>
#include <sstream>

#include "importers/sceneapi/dev/null_api.h"
#include "importers/sceneapi/dev/velmoralive_loader.h"
#include "platform/message_box.h"
#include "plugins/3dsmax/export/narrow_name.h"
#include "plugins/3dsmax/export/report_json.h"
#include "plugins/3dsmax/shell/callback.h"
#include "plugins/3dsmax/shell/command_ids.h"
#include "standins/host/memory/demo_scenes.h"
#include "standins/host/memory/image_file.h"
#include "standins/host/memory/scene_builder.h"
#include "standins/host/memory/splines.h"
#include "standins/host/memory/timed_object.h"
#include "tests/support/installation_entries.h"
#include "tests/support/stand_in_library.h"
#include "tools/vsqinfo/vsq_reader.h"
#ifdef VSQ_WITH_IMPORTER
#include "tests/import/imported_model.h"
#endif

#ifdef _WIN32
#define VSQ_EXPORTED __declspec(dllexport)
#else
#define VSQ_EXPORTED __attribute__((visibility("default")))
#endif

static std::vector<nlohmann::json> reports;

extern "C" VSQ_EXPORTED void vsq_host_export_report(const char* json_utf8) {
    reports.push_back(nlohmann::json::parse(json_utf8));
}

namespace {

using namespace memhost;
using Light = LightscapeLight;

const MeshBuilder kPlate = grid_mesh(1, 1, 1);
const MeshBuilder kPoint({{0, 0, 0}}, {});
const MeshBuilder kForeign({{}, {}, {}}, {{0, 1, 9}});

Matrix3 slide(TimeValue t) {
    return translation(static_cast<float>(t), 0, 0);
}

// What a case changes before its command runs.
struct Stage {
    Stage() {
        std::filesystem::create_directories(folder.path() / "textures");
        write_png(units_from_utf8(folder / "sky.png"), Image(1, 1));
        options->Layers = false;
        scene.animation_frames(0, 2);
    }

    NodeBuilder node(const wchar_t* name = L"n") { return scene.node(name); }
    BitmapMap& picture(int channel = 1) {
        return scene.bitmap(folder / "sky.png").channel(channel);
    }
    ProceduralMap& drawn() { return scene.make<ProceduralMap>(solid({1, 2, 3, 255})); }
    StandardMaterial& material(const wchar_t* name = L"m") {
        return scene.make<StandardMaterial>(name);
    }
    void plate(Mtl& with, const wchar_t* name = L"n") { node(name).mesh(kPlate).material(with); }
    PhotometricLight& light(Light::LightTypes type) {
        return node().make_object<PhotometricLight>(type);
    }
    SplineObject& spline(const Spline3D& spline = polyline({{}, {1, 0, 0}})) {
        options->GeneralCurves = true;
        return node().make_object<SplineObject>(std::vector<Spline3D>{spline}).renderable();
    }
    NodeBuilder flag() {
        return node().deforming(DeformingMesh(kPlate).moves(
            [](TimeValue t, const Mesh&, Mesh& m) { m.verts[0].z = static_cast<float>(t); }));
    }

    TemporaryFolder folder;
    RegistryEntries registry{{{"HKEY_LOCAL_MACHINE", "SOFTWARE\\Quoria\\Velmora 11",
                               "ResourceFolder", registry_text(folder.path().u8string())}}};
    SceneBuilder scene;
    std::shared_ptr<Qor::Options> options = std::make_shared<Qor::Options>(&scene.host());
    std::string target = folder / "s.vsq";
};

nlohmann::json report_of(Stage& stage, int command) {
    reports.clear();
    platform::set_message_box_handler([](const auto&, const auto&, auto) {});
    stage.scene.host().answer_save_dialog(stage.target);
    Callback(&stage.scene.host(), stage.options).ExecuteAction(command);
    platform::set_message_box_handler({});
    EXPECT_EQ(reports.size(), 1u);
    return reports.empty() ? nlohmann::json() : reports[0];
}

// Geometry at tick 0 only.
struct Vanishing final : GeomObject, TimedObject {
    SClass_ID SuperClassID() override { return gone ? HELPER_CLASS_ID : GEOMOBJECT_CLASS_ID; }
    Object* evaluate(TimeValue t) override {
        gone = t != 0;
        return this;
    }
    bool gone = false;
};

struct UnreadCamera final : CameraObject {
    RefResult EvalCameraState(TimeValue, Interval&, CameraState*) override { return REF_FAIL; }
};

Matrix3 scaled(float x) {
    return Matrix3({x, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 0});
}

struct Case {
    const char* code;
    const char* reason;  // a part of it
    std::function<void(Stage&)> build;
    const char* node = "n";
    const char* besides = nullptr;  // another code of the report
    int command = kExportCommand;
};

const Class_ID kBone(0x28bf6e8d, 0x2ecca840);
const Class_ID kExcluded(0x608b1c8f, 0x2f0b0d2d);

const Case kCases[] = {
    {"export-failed", "could not open file", [](Stage& s) { s.target = s.folder / "x/s.vsq"; }, ""},
    {"link-failed", "Could not get a query api", [](Stage&) {}, "", nullptr, kRenderCommand},
    {"library-not-written", "no renderer is registered", [](Stage& s) { s.flag(); }},
    {"map-not-drawn", "'m', bump map",
     [](Stage& s) {
         s.scene.host().bitmaps().refuse_bitmaps();
         s.plate(s.material().map(kBumpSlot, &s.drawn()));
     }},
    {"map-not-written", "'a/b', diffuse map",
     [](Stage& s) { s.plate(s.material(L"a/b").map(kDiffuseSlot, &s.drawn())); }},
    {"hair-script-failed", "script that", [](Stage& s) { s.scene.host().scripts().set_failing(); },
     "", "hair-script-failed"},
    {"frame-script-not-written", "",
     [](Stage& s) { std::filesystem::create_directory(s.folder.path() / "s.py"); }, "", nullptr,
     kExportAnimationCommand},
    {"export-cancelled", "2 of 3 nodes",
     [](Stage& s) { s.node(L"a"), s.node(L"b"), s.scene.host().cancel_at_poll(2); }, ""},
    {"capture-cancelled", "1 frames", [](Stage& s) { s.flag(), s.scene.host().cancel_at_poll(3); },
     "n", "library-not-written"},
    {"object-missing", "at tick 160",
     [](Stage& s) { s.node().make_object<Vanishing>(), s.scene.time(160); }},
    {"mesh-class-left-out", "0x608b1c8f",
     [](Stage& s) { s.node().make_object<ConvertibleObject>(kPlate, kExcluded); }},
    {"mesh-not-convertible", "class 0x",
     [](Stage& s) { s.node().make_object<PlainObject>(GEOMOBJECT_CLASS_ID); }},
    {"mesh-without-faces", "1 vertices, 0 faces", [](Stage& s) { s.node().mesh(kPoint); }},
    {"mesh-foreign-vertices", "face 0 names vertex 9 of 3",
     [](Stage& s) { s.node().mesh(kForeign); }},
    {"mesh-coordinates-out-of-range", "'m'",
     [](Stage& s) {
         const auto mesh = MeshBuilder({{}, {}, {}}, {{0, 1, 2}}).map(1, {{}}, {{0, 0, 7}});
         s.node().mesh(mesh).material(s.material().map(kDiffuseSlot, &s.picture()));
     }},
    {"mesh-channel-missing", "channel 4",
     [](Stage& s) { s.plate(s.material().map(kDiffuseSlot, &s.picture(4))); }},
    {"mesh-vertex-colours", "",
     [](Stage& s) { s.node().mesh(grid_mesh(1, 1, 1).map_positions(0)); }},
    {"map-slot-not-sent", "'m', slot 'Ambient Color'",
     [](Stage& s) { s.plate(s.material().map(kAmbientSlot, &s.picture())); }},
    {"bitmap-missing", "'m', opacity map",
     [](Stage& s) { s.plate(s.material().map(kOpacitySlot, &s.scene.bitmap(L"no.png"))); }},
    {"material-opacity", "'m', opacity 0.25",
     [](Stage& s) { s.flag().material(s.material().opacity(0.25f)); }, "n", "library-not-written"},
    {"material-self-illumination", "'m'",
     [](Stage& s) { s.plate(s.material().self_illumination(1)); }},
    {"light-kind-unknown", "class 0x1014", [](Stage& s) { s.node().make_object<SpotLight>(); }},
    {"light-kind-unknown", "target cylinder",
     [](Stage& s) { s.light(Light::TARGET_CYLINDER_TYPE); }},
    {"light-without-shape", "5 points",
     [](Stage& s) { s.light(Light::AREA_TYPE).shape(std::vector<Point3>(5)); }},
    {"sky-map-too-late", "", [](Stage& s) { s.node().make_object<SkyLight>().map(&s.picture()); }},
    {"sky-without-picture", "isn't a bitmap",
     [](Stage& s) { s.node().make_object<SkyLight>().map(&s.drawn()); }},
    {"camera-state-unread", "tick 0", [](Stage& s) { s.node().make_object<UnreadCamera>(); }},
    {"shape-not-convertible", "class 0x",
     [](Stage& s) {
         s.options->GeneralCurves = true, s.node().make_object<PlainObject>(SHAPE_CLASS_ID);
     }},
    {"spline-without-segments", "1 of 1 splines", [](Stage& s) { s.spline(polyline({})); }},
    {"mesh-second-channel", "bump map on channel 2, sent: channel 1",
     [](Stage& s) {
         auto& both = s.material().map(kDiffuseSlot, &s.picture()).map(kBumpSlot, &s.picture(2));
         s.node().mesh(grid_mesh(1, 1, 1).map_positions(2)).material(both);
     }},
    {"material-generic", "'g', class 0x1, 0x2",
     [](Stage& s) { s.plate(s.scene.make<BlockMaterial>(L"g", Class_ID(1, 2))); }},
    {"map-picture-shared", "'twin', bump map",
     [](Stage& s) {
         s.plate(s.material(L"twin").map(kBumpSlot, &s.drawn()), L"first");
         s.plate(s.material(L"twin").map(kBumpSlot, &s.drawn()));
     }},
    {"light-filter-colour", "red 0.5",
     [](Stage& s) { s.light(Light::SPHERE_TYPE).filter(Point3(0.5f, 1, 1)); }},
    {"light-power-cut", "2.5", [](Stage& s) { s.node().make_object<OmniLight>().intensity(2.5f); }},
    {"light-web-missing", "",
     [](Stage& s) { s.light(Light::POINT_TYPE).web_file(std::string("no.ies")); }},
    {"light-web-not-ies", "",
     [](Stage& s) { s.light(Light::POINT_TYPE).web_file(std::string("lamp.ldt")); }},
    {"light-distribution", "spotlight",
     [](Stage& s) { s.light(Light::POINT_TYPE).distribution(Light::SPOTLIGHT_DIST); }},
    {"light-distribution", "a web",
     [](Stage& s) { s.light(Light::AREA_TYPE).web_file(std::string("lamp.ies")); }},
    {"camera-orthographic", "", [](Stage& s) { s.node().camera().orthographic(); }},
    {"camera-clipping-not-sent", "near 0.5",
     [](Stage& s) { s.node().camera().planes(0.5f, 9).manual_clip(); }},
    {"camera-fov-animated", "",
     [](Stage& s) { s.node().camera().fov([](TimeValue t) { return t < 300 ? 1.0f : 2.0f; }); }},
    {"shape-at-one-time", "Deformable is off",
     [](Stage& s) { s.flag(), s.options->Deformable = false; }},
    {"matrix-not-finite", "", [](Stage& s) { s.node().transform(scaled(NAN)); }},
    {"matrix-without-inverse", "its parent",
     [](Stage& s) { s.node(L"flat").transform(scaled(0)).child(L"n"); }, "flat/n"},
    {"name-narrowed", "in the scene", [](Stage& s) { s.node(L"Stra\u0161e"); }, "Stra\u0161e"},
    {"name-empty", "the node's own", [](Stage& s) { s.node(L""); }, ""},
    {"name-twice", "", [](Stage& s) { s.node().child(L"a"), s.node(); }},
    {"node-hidden", "",
     [](Stage& s) {
         s.node().mesh(kPlate).hidden();
         s.node(L"t").hidden().make_object<PlainObject>(GEOMOBJECT_CLASS_ID,
                                                        Class_ID(TARGET_CLASS_ID, 0));
     }},
    {"light-switched-off", "PhotometricLights",
     [](Stage& s) { s.light(Light::POINT_TYPE), s.options->PhotometricLights = false; }},
    {"light-switched-off", "SkyLights",
     [](Stage& s) { s.node().make_object<SkyLight>(), s.options->SkyLights = false; }},
    {"mesh-bones-off", "",
     [](Stage& s) {
         s.node().make_object<ConvertibleObject>(kPlate, kBone), s.options->Bones = false;
     }},
    {"shape-not-renderable", "", [](Stage& s) { s.spline().renderable(false); }},
    {"curves-switched-off", "", [](Stage& s) { s.spline(), s.options->GeneralCurves = false; }},
    {"camera-switched-off", "", [](Stage& s) { s.node().camera(), s.options->cameras = false; }},
    {"track-switched-off", "TransformAnimations",
     [](Stage& s) {
         s.node().mesh(kPlate).motion(slide);
         s.options->TransformAnimations = false;
     }},
    {"track-switched-off", "CameraAnimations",
     [](Stage& s) { s.node().motion(slide).camera(), s.options->CameraAnimations = false; }},
};

TEST(ExportNotes, EachLossIsReportedWithItsNodeAndReason) {
    std::set<std::string> seen = {"link-broken"};  // the next test
    for (const Case& one : kCases) {
        SCOPED_TRACE(one.code);
        Stage stage;
        one.build(stage);
        const nlohmann::json report = report_of(stage, one.command);
        std::vector<std::string> codes, wanted = {one.code};
        for (const auto& note : report["notes"]) {
            codes.push_back(note["code"]);
            if (note["code"] == one.code) {
                EXPECT_EQ(note["node"], one.node);
                EXPECT_NE(note["reason"].get<std::string>().find(one.reason), std::string::npos)
                    << note["reason"];
                EXPECT_EQ(note["count"], 1);
                seen.insert(codes.back());
            }
        }
        if (one.besides != nullptr) {
            wanted.push_back(one.besides);
        }
        std::sort(codes.begin(), codes.end());
        std::sort(wanted.begin(), wanted.end());
        EXPECT_EQ(codes, wanted) << report;
    }
    for (const NoteKind& kind : kNoteKinds) {
        EXPECT_EQ(seen.count(kind.code), 1u) << kind.code << " has no case";
    }
}

// Counts the groups that hold objects, and the cameras, by their names from the top of the tree on.
struct FoundNodes final : vsqinfo::VsqListener {
    void block_begins(const vsqinfo::VsqBlock& block) override {
        blocks.push_back(block.keyword == "group" ? "/" + block.name : "");
        if (block.keyword == "camera") {
            counts["camera " + block.name] = 1;
        } else if (block.keyword == "object") {
            counts[std::accumulate(blocks.begin() + 1, blocks.end(), std::string())] = 1;
        }
    }
    void block_ends() override { blocks.pop_back(); }

    std::vector<std::string> blocks;
    std::map<std::string, int> counts;
};

// The nodes that give something, by the names that they have in the scene.
std::map<std::string, INode*> giving_nodes(MemoryHost& host) {
    std::map<std::string, INode*> giving;
    for (const auto& node : host.nodes()) {
        Object* const object = node->EvalWorldState(0).obj;
        const bool is_target =
            object != nullptr && object->ClassID() == Class_ID(TARGET_CLASS_ID, 0);
        const SClass_ID kind =
            object == nullptr || is_target ? HELPER_CLASS_ID : object->SuperClassID();
        std::string path;
        for (INode* up = node.get(); up->GetParentNode() != nullptr; up = up->GetParentNode()) {
            path.insert(0, "/" + NarrowName(up->GetName()));
        }
        if (kind == CAMERA_CLASS_ID) {
            giving["camera " + NarrowName(node->GetName())] = node.get();
        } else if (kind == GEOMOBJECT_CLASS_ID || kind == LIGHT_CLASS_ID ||
                   kind == SHAPE_CLASS_ID) {
            giving[path] = node.get();
        }
    }
    return giving;
}

// These leave out all that a node gives. The others change it, or leave out a part.
const std::set<std::string> kLeavesNodeOut = {
    "object-missing",      "mesh-class-left-out",   "mesh-not-convertible", "mesh-without-faces",
    "light-kind-unknown",  "mesh-foreign-vertices", "light-without-shape",  "sky-map-too-late",
    "sky-without-picture", "shape-not-convertible", "node-hidden",          "light-switched-off",
    "mesh-bones-off",      "shape-not-renderable",  "curves-switched-off",  "camera-switched-off"};

void expect_report_and_scene_agree(Stage& stage) {
    std::set<std::string> missing, noted;
    const nlohmann::json report = report_of(stage, kExportCommand);
    FoundNodes found;
    vsqinfo::read_vsq_file(stage.target, &found);
    for (const auto& [path, node] : giving_nodes(stage.scene.host())) {
        // A deforming mesh is in a group of its own.
        const std::string deforming = path + "/" + NarrowName(node->GetName());
        if (found.counts.count(path) + found.counts.count(deforming) == 0) {
            missing.insert(FullNodeName(node));
        }
    }
    for (const auto& note : report["notes"]) {
        if (kLeavesNodeOut.count(note["code"]) != 0) {
            noted.insert(note["node"].get<std::string>());
        }
    }
    EXPECT_EQ(missing, noted) << report;
}

TEST(ExportNotes, WhatIsMissingFromASceneIsInItsReport) {
    for (const DemoScene& demo : demo_scenes()) {
        for (const bool all_on : {false, true}) {
            SCOPED_TRACE(demo.name);
            Stage stage;
            demo.build(stage.scene);
            stage.options->GeneralCurves = all_on;
            stage.options->Bones = stage.options->SkyLights = stage.options->cameras = all_on;
            expect_report_and_scene_agree(stage);
        }
    }
    for (const Case& one : kCases) {
        Stage stage;
        one.build(stage);
        SCOPED_TRACE(one.code);
        if (one.command == kExportCommand && one.code != std::string("export-failed") &&
            one.code != std::string("export-cancelled")) {
            expect_report_and_scene_agree(stage);
        }
    }
}

#ifdef VSQ_WITH_IMPORTER
TEST(ExportNotes, WhatIsMissingFromAModelIsInItsReport) {
    SKIP_WITHOUT_MODELS();
    const std::string samples = VSQ_SAMPLES "/";
    const std::string models[] = {
        samples + "awkward-names.gltf",     samples + "desk-lamp.gltf",
        samples + "traffic-light.obj",      samples + "windmill.dae",
        kModels + "3DS/CameraRollAnim.3ds", kModels + "BLEND/CubeHierarchy_248.blend",
        kModels + "Collada/lights.dae",     kModels + "FBX/spider.fbx",
        kModels + "IFC/AC14-FZK-Haus.ifc",  kModels + "NFF/NFF/ManyEarthsNotJustOne.nff",
    };
    for (const std::string& model : models) {
        for (const bool all_on : {false, true}) {
            SCOPED_TRACE(model);
            Stage stage;
            vsqexport::import_model(model, stage.scene);
            stage.options->Bones = stage.options->cameras = all_on;
            expect_report_and_scene_agree(stage);
        }
    }
}
#endif

// A renderer whose link breaks at the second node.
struct BreakingScene final : NullApi {
    bool connect(const char*, std::int32_t, std::int32_t) override { return true; }
    bool begin_group(const char* name, bool) override {
        return name == std::string("b") ? throw std::runtime_error("port closed") : true;
    }
};

struct BreakingLibrary final : StandInLibrary {
    qorScene_api* get_scene_api(int, int) override { return &scene; }
    const char* instances_xml() override {
        return "<velmora_instances><i><process_id>7</process_id><version_major>11</version_major>"
               "<livelink_port>1</livelink_port></i></velmora_instances>";
    }
    const char* scene_xml() override { return "<scene/>"; }
    BreakingScene scene;
};

TEST(ExportNotes, ABrokenLinkIsReportedWithWhatWasSent) {
    Stage stage;
    const std::string program = stage.folder / "velmora.exe";
    const std::string library = stage.folder / "qorvelmoralive6_64.so";
    std::ofstream(std::filesystem::u8path(program)) << "no program";
    const std::string path = stage.folder.path().u8string();
    const RegistryEntries installed(
        installation_entries("HKEY_LOCAL_MACHINE", "Velmora 11", program, path, path));
    std::filesystem::copy_file(FAKE_LIVE_LIBRARY, std::filesystem::u8path(library));
    const auto keeper =
        load_fake_library(library, []() -> live_library::Root* { return new BreakingLibrary; });
    stage.node(L"a"), stage.node(L"b");
    const nlohmann::json report = report_of(stage, kUpdateCommand);
    EXPECT_EQ(report["command"], "update");
    ASSERT_EQ(report["notes"].size(), 1u) << report;
    EXPECT_EQ(report["notes"][0]["code"], "link-broken");
    EXPECT_EQ(report["notes"][0]["reason"], "port closed; 2 of 3 nodes had been sent");
    // The log has a line for the note.
    EXPECT_NE(file_contents(stage.folder / "sceneapi.log").find("ERROR:  link-broken (1): "),
              std::string::npos);
    unload();
}

TEST(ExportNotes, EqualNotesCountNodesAndNotFrames) {
    Stage stage;
    stage.node().mesh(kPlate).hidden();
    stage.node().mesh(kPlate).hidden();
    stage.node(L"a still that moves").mesh(kPlate).motion(slide);
    stage.node(L"lamp").make_object<OmniLight>().intensity(
        [](TimeValue t) { return 0.5f + static_cast<float>(t); });
    const auto notes = report_of(stage, kExportAnimationCommand)["notes"];
    ASSERT_EQ(notes.size(), 3u) << notes;
    EXPECT_EQ(notes[0]["code"], "light-power-cut");
    EXPECT_EQ(notes[0]["count"], 1);
    EXPECT_EQ(notes[2]["code"], "node-hidden");
    EXPECT_EQ(notes[2]["count"], 2);
}

// Half a surrogate pair, control characters, bytes of a code page: the parser takes them all.
TEST(ExportNotes, AnyNameIsValidJson) {
    MemoryHost host;
    INode* const node =
        &host.add_node(host.add_node(host.root(), L"a\"\\\x1f"), std::wstring(1, 0xD800) + L"z");
    ExportNotes notes;
    notes.add(Note::kNodeHidden, node, "caf\xe9 \xed\xa0\x80\x7f", "\xe2\x82\xac");
    const auto note = nlohmann::json::parse(ReportJson(notes, "export"))["notes"][0];
    EXPECT_EQ(note["node"], "a\"\\\x1f/\xef\xbf\xbdz");
    EXPECT_EQ(note["reason"], "caf\xc3\xa9 \xc3\xad\xc2\xa0\xc2\x80\x7f");
    EXPECT_EQ(note["path"], "\xe2\x82\xac");
}

// So deep a tree that the full names of all its nodes would take gigabytes.
TEST(ExportNotes, NamesOfDeepNodesAreCut) {
    MemoryHost host;
    MemoryNode* node = &host.root();
    for (int i = 1; i <= 70; ++i) {
        node = &host.add_node(*node, std::to_wstring(i));
        const std::string start = i <= 64 ? "1" : ".../" + std::to_string(i - 63);
        EXPECT_EQ(FullNodeName(node).find(start), 0u) << i;
    }
}

TEST(ExportNotes, TheDocumentListsAllKinds) {
    std::string table;
    for (const NoteKind& kind : kNoteKinds) {
        table += std::string("| `") + kind.code + "` | " + SeverityName(kind.severity) + " | " +
                 kind.sentence + " | " + kind.facts + " |\n";
    }
    const std::string document = file_contents(REPORT_DOCUMENT);
    const size_t start = document.find("| `export-failed`");
    EXPECT_EQ(document.substr(start), table);
}

}  // namespace
