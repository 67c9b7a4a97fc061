#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>

#include "standins/host/memory/demo_scenes.h"
#include "tests/support/exported_libraries.h"
#include "tests/support/exported_scene.h"

namespace {

namespace fs = std::filesystem;
using memhost::DeformingMesh;
using memhost::MeshBuilder;
using memhost::SceneBuilder;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

constexpr int kFrame = 160;  // ticks at 30 frames a second

// Two triangles, each of a material of its own if that is wanted, that fold along their edge.
MeshBuilder square(std::vector<MtlID> materials = {0}) {
    return MeshBuilder({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, {{0, 1, 2}, {0, 2, 3}})
        .groups({1})
        .material_ids(materials)
        .map_positions(1);
}

// The same along the other edge.
MeshBuilder turned_square() {
    return MeshBuilder({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, {{0, 1, 3}, {1, 2, 3}})
        .groups({1});
}

float height(int frame) {
    return 0.25f * static_cast<float>(frame);
}

// All of it rises.
void rise(TimeValue t, const Mesh& at_rest, Mesh& mesh) {
    for (int v = 0; v < mesh.numVerts; ++v) {
        mesh.verts[v] = at_rest.verts[v] + Point3(0, 0, height(t / kFrame));
    }
}

DeformingMesh rising(std::vector<memhost::MeshKey> keys) {
    return DeformingMesh(std::move(keys)).moves(rise);
}

// "Leaf", with the materials "Stone" and "Moss" of which the first has coordinates.
void add_leaf(SceneBuilder& scene, const DeformingMesh& mesh, bool has_uv = false) {
    auto& stone = scene.make<memhost::StandardMaterial>(L"Stone");
    if (has_uv) {
        stone.map(memhost::kDiffuseSlot, &scene.bitmap(L"missing.png").channel(1));
    }
    auto& moss = scene.make<memhost::StandardMaterial>(L"Moss");
    auto& both = scene.make<memhost::MultiMaterial>(L"Both", std::vector<Mtl*>{&stone, &moss});
    scene.node(L"Leaf").deforming(mesh).material(both);
}

// What opens blocks, in their order, without the names of materials and shaders.
std::vector<std::string> blocks_of(const std::string& text) {
    std::vector<std::string> blocks;
    for (size_t end = text.find(" {\n"); end != std::string::npos;
         end = text.find(" {\n", end + 1)) {
        const std::string line =
            text.substr(text.rfind('\n', end) + 1, end - text.rfind('\n', end) - 1);
        for (const char* kind : {"group \"Leaf", "object ", "animation "}) {
            if (line.compare(0, std::string(kind).size(), kind) == 0) {
                blocks.push_back(line);
            }
        }
    }
    return blocks;
}

// Of the last animation that is told by objects.
std::string last_timestamps(const std::string& text) {
    const std::string mark = "\"timestamps\" [ \1\2\3f";
    const size_t at = text.rfind(mark);
    if (at == std::string::npos) {
        return "";
    }
    std::uint32_t count = 0;
    std::memcpy(&count, text.data() + at + mark.size(), sizeof count);
    std::vector<float> numbers(count);
    std::memcpy(numbers.data(), text.data() + at + mark.size() + 4, 4 * size_t{count});
    std::string result;
    for (const float number : numbers) {
        result += std::to_string(static_cast<int>(number)) + " ";
    }
    return result;
}

TEST(DeformableExport, PutsOneTopologyIntoALibrary) {
    for (const auto& [frames, has_uv] :
         {std::pair{1, false}, {1, true}, {2, true}, {100, false}, {100, true}}) {
        SCOPED_TRACE(std::to_string(frames) + " frames");
        const ExportedLibraries libraries;
        SceneBuilder scene;
        // An object that holds for the whole range is no animation.
        scene.animation_ticks(0, (frames - 1) * kFrame + kFrame / 2);
        add_leaf(scene, rising({{0, square()}}), has_uv);
        const std::string text = exported(scene);
        ASSERT_THAT(libraries.names(), ElementsAre("Leaf_Stone.qorT"));
        EXPECT_THAT(blocks_of(text),
                    ElementsAre("group \"Leaf\"", "group \"Leaf\"", "object \"Leaf\"",
                                "animation \"deformable_qortlib\" \"Leaf_deformable\""));
        EXPECT_THAT(text, HasSubstr("\nflags 16842752\n"));

        LibraryArrays library(libraries.paths().front());
        EXPECT_EQ(library.uvs.size(), has_uv ? 4u : 0u);
        EXPECT_EQ(library.triangles, (std::vector<std::uint32_t>{0, 1, 2, 0, 2, 3}));
        ASSERT_EQ(library.frames.size(), static_cast<size_t>(frames));
        ASSERT_EQ(library.vertices.size(), 4 * library.frames.size());
        EXPECT_EQ(library.normals.size(), library.vertices.size());
        for (std::uint32_t n = 0; n < library.frames.size(); ++n) {
            const LibraryArrays::Frame& frame = library.frames[n];
            EXPECT_EQ(frame.number, n);
            EXPECT_EQ(frame.time, static_cast<float>(33.0f * static_cast<float>(n) / 1000.0));
            EXPECT_THAT(frame.ranges, ElementsAre(0, 2, 4 * n, 4, 4 * n, 4, 0, has_uv ? 4 : 0));
            EXPECT_EQ(library.vertices[4 * n + 2],
                      (LibraryArrays::Vector{1, 1, height(static_cast<int>(n))}));
        }
    }
}

struct PartsCase {
    const char* what;
    std::vector<memhost::MeshKey> keys;
    std::vector<std::string> libraries;
    std::vector<std::string> blocks;  // behind the node's own group
    std::string times;                // of the frames that are objects
};

std::vector<std::string> operator+(std::vector<std::string> a, const std::vector<std::string>& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

std::vector<std::string> frames_from(int first, int last) {
    std::vector<std::string> blocks = {"group \"Leaf\"",
                                       "animation \"deformable\" \"Leaf_deformable\""};
    for (int frame = first; frame <= last; ++frame) {
        blocks.push_back("object \"qor_deform_" + std::to_string(frame) + "\"");
    }
    return blocks;
}

TEST(DeformableExport, GivesEachPartItsOwnForm) {
    const std::vector<std::string> library = {
        "group \"Leaf\"", "object \"Leaf\"",
        "animation \"deformable_qortlib\" \"Leaf_deformable\""};
    MeshBuilder larger({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}},
                       {{0, 1, 2}, {0, 2, 3}, {2, 1, 0}});
    larger.groups({1}).material_ids({0, 1, 1});
    const PartsCase cases[] = {
        {"changed at frame 5",
         {{0, square()}, {5 * kFrame, turned_square()}},
         {},
         frames_from(0, 6),
         "0 33 66 99 132 165 198 "},
        {"one of two changed",
         {{0, square({0, 1})}, {5 * kFrame, larger}},
         {"Leaf_Stone.qorT"},
         library + frames_from(0, 6),
         "0 33 66 99 132 165 198 "},
        {"comes at frame 3 and changes",
         {{0, turned_square()}, {3 * kFrame, square({0, 1})}, {5 * kFrame, larger}},
         {},
         frames_from(0, 6) + frames_from(3, 6),
         "99 132 165 198 "},
    };
    for (const PartsCase& wanted : cases) {
        SCOPED_TRACE(wanted.what);
        const ExportedLibraries libraries;
        SceneBuilder scene;
        scene.animation_frames(0, 6);
        add_leaf(scene, rising(wanted.keys));
        const std::string text = exported(scene);
        EXPECT_EQ(libraries.names(), wanted.libraries);
        std::vector<std::string> blocks = blocks_of(text);
        blocks.erase(blocks.begin());
        EXPECT_EQ(blocks, wanted.blocks);
        EXPECT_EQ(last_timestamps(text), wanted.times);
        EXPECT_THAT(text,
                    HasSubstr("\"start_time\" 0,\n\"duration\" 0.231,\n\"duration_org\" 0.231"));
    }
}

// A part counts from its own first frame on.
TEST(DeformableExport, NumbersTheFramesOfALatePart) {
    const ExportedLibraries libraries;
    SceneBuilder scene;
    scene.animation_frames(0, 6);
    add_leaf(scene, rising({{0, square({0, 0})}, {3 * kFrame, square({0, 1})}}));
    exported(scene);
    ASSERT_THAT(libraries.names(), ElementsAre("Leaf_Moss.qorT"));
    const LibraryArrays library(libraries.paths().front());
    ASSERT_EQ(library.frames.size(), 4u);
    EXPECT_EQ(library.frames[0].number, 3u);
    EXPECT_EQ(library.frames[0].time, 0.099f);
    EXPECT_EQ(library.frames[0].ranges[2], 0u);
}

TEST(DeformableExport, LeavesOutFramesOfAnotherMeshsVertices) {
    const ExportedLibraries libraries;
    SceneBuilder scene;
    scene.animation_frames(0, 6);
    MeshBuilder broken({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, {{0, 1, 2}, {0, 2, 3}});
    add_leaf(scene, rising({{0, square()}, {2 * kFrame, broken}, {4 * kFrame, square()}}));
    EXPECT_THAT(exported(scene), HasSubstr("#error \"Mesh Leaf lacks frames"));
    const LibraryArrays library(libraries.paths().front());
    ASSERT_EQ(library.frames.size(), 5u);
    EXPECT_EQ(library.frames[2].number, 4u);
    EXPECT_EQ(library.vertices[11], (LibraryArrays::Vector{0, 1, height(4)}));
}

TEST(DeformableExport, KeepsWhatIsThereAtACancelAndFreesWhatWasConverted) {
    const int conversions = memhost::ConvertibleObject::live_conversions();
    std::vector<size_t> frames;
    for (int poll = 1; poll < 14; ++poll) {
        const ExportedLibraries libraries;
        SceneBuilder scene;
        scene.animation_frames(0, 9).node(L"Leaf").object(
            std::make_shared<memhost::DeformingConvertible>(rising({{0, square()}}),
                                                            Class_ID(0x10, 0)));
        scene.host().cancel_at_poll(poll);
        const std::string text = exported(scene);
        EXPECT_EQ(std::count(text.begin(), text.end(), '{'),
                  std::count(text.begin(), text.end(), '}'));
        frames.push_back(
            libraries.paths().empty() ? 0 : LibraryArrays(libraries.paths().front()).frames.size());
    }
    // The first two polls are those of the walk and of the first frame.
    EXPECT_THAT(frames, ElementsAre(0, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 10));
    EXPECT_EQ(memhost::ConvertibleObject::live_conversions(), conversions);
}

TEST(DeformableExport, TakesTheDemoScene) {
    const ExportedLibraries libraries;
    SceneBuilder scene;
    memhost::find_demo_scene("deforming")->build(scene);
    const std::string text = exported(scene);
    EXPECT_THAT(libraries.names(), ElementsAre("Crate_Wood.qorT", "Flag_Stripes.qorT",
                                               "Lung_Lung - EmptyMaterial#0 _ 128_128_128.qorT"));
    EXPECT_THAT(text, HasSubstr("qor_deform_40"));
    const LibraryArrays lung(libraries.paths().back());
    ASSERT_EQ(lung.frames.size(), 41u);
    const auto first_of = [&lung](size_t frame) {
        return lung.vertices[lung.frames[frame].ranges[2]];
    };
    EXPECT_EQ(first_of(0), first_of(20));
    EXPECT_NE(first_of(20), first_of(21));
}

TEST(DeformableExport, NeverWritesOverALibrary) {
    const ExportedLibraries libraries;
    SceneBuilder scene;
    scene.animation_frames(0, 2);
    scene
        .node(L"Box/01\u4e00")  // whose last byte is 0
        .deforming(rising({{0, square()}}))
        .material(scene.make<memhost::StandardMaterial>(L"Metal:A"));
    for (int n = 0; n < 3; ++n) {
        exported(scene);
    }
    EXPECT_THAT(libraries.names(), ElementsAre("Box_01__Metal_A.qorT", "Box_01__Metal_A_1.qorT",
                                               "Box_01__Metal_A_2.qorT"));
}

TEST(DeformableExport, RefersToALibraryThatCannotBeWritten) {
    SceneBuilder scene;
    scene.animation_frames(0, 2);
    add_leaf(scene, rising({{0, square()}}));
    const auto expect_failure = [&scene](const std::string& library) {
        CaptureStderr();
        const std::string text = exported(scene);
        EXPECT_THAT(GetCapturedStderr(), HasSubstr(library + "\" for writing!\n"));
        EXPECT_THAT(text, HasSubstr("\"file\" \"" + library + "\""));
    };
    {
        const RegistryEntries no_installation({});
        expect_failure("Animations/3ds max/Leaf_Stone.qorT");
    }
    const ExportedLibraries libraries;
    const std::string library = libraries.animations().u8string() + "/3ds max/Leaf_Stone.qorT";
    fs::remove(libraries.animations());
    expect_failure(library);
    // A file where the folder should be stands for one that can't be written to.
    std::ofstream(libraries.animations()) << "not a folder";
    expect_failure(library);
    fs::remove(libraries.animations());
    fs::create_directory(libraries.animations());
}

}  // namespace
