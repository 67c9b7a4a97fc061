#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>

#include "tests/support/exported_libraries.h"
#include "tests/support/exported_meshes.h"
#include "tests/support/exported_scene.h"
#include "tests/support/qort_bytes.h"

namespace {

namespace fs = std::filesystem;
using namespace memhost;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

constexpr int kFrame = 160;  // ticks at 30 frames a second

const std::vector<Point3> kCorners = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};

// Two triangles with a common edge, and with the material ids in `materials`.
MeshBuilder square(std::vector<MtlID> materials = {0}) {
    return MeshBuilder(kCorners, {{0, 1, 2}, {0, 2, 3}})
        .groups({1})
        .material_ids(materials)
        .map_positions(1);
}

// The square, divided along its other diagonal.
MeshBuilder turned_square() {
    return MeshBuilder(kCorners, {{0, 1, 3}, {1, 2, 3}}).groups({1});
}

float height(int frame) {
    return 0.25f * static_cast<float>(frame);
}

// Moves all vertices up with time.
void rise(TimeValue t, const Mesh& at_rest, Mesh& mesh) {
    for (int v = 0; v < mesh.numVerts; ++v) {
        mesh.verts[v] = at_rest.verts[v] + Point3(0, 0, height(t / kFrame));
    }
}

DeformingMesh rising(std::vector<MeshKey> keys) {
    return DeformingMesh(std::move(keys)).moves(rise);
}

// Adds "Leaf" with the materials "Stone" and "Moss". `has_uv` gives the first one a texture.
void add_leaf(SceneBuilder& scene, const DeformingMesh& mesh, bool has_uv = false) {
    auto& stone = scene.make<StandardMaterial>(L"Stone");
    if (has_uv) {
        stone.map(kDiffuseSlot, &scene.bitmap(L"missing.png").channel(1));
    }
    auto& moss = scene.make<StandardMaterial>(L"Moss");
    auto& both = scene.make<MultiMaterial>(L"Both", std::vector<Mtl*>{&stone, &moss});
    scene.node(L"Leaf").deforming(mesh).material(both);
}

const std::string kGroup = "group \"Leaf\" {\n";
const std::string kInLibrary =
    kGroup + "object \"Leaf\" {\n" + "animation \"deformable_qortlib\" \"Leaf_deformable\" {\n";

// The lines that open blocks, in order, without materials and shaders.
std::string blocks_of(const std::string& text) {
    std::string blocks;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const std::string kind = line.substr(0, line.find(' '));
        const bool opens = line.size() > 2 && line.substr(line.size() - 2) == " {";
        if (opens && (kind == "object" || kind == "animation" || line + "\n" == kGroup)) {
            blocks += line + "\n";
        }
    }
    return blocks;
}

TEST(DeformableExport, WritesAMeshOfConstantTopologyToALibrary) {
    for (const auto& [frames, has_uv] :
         {std::pair{1, false}, {1, true}, {2, false}, {2, true}, {100, false}, {100, true}}) {
        SCOPED_TRACE(std::to_string(frames) + " frames");
        const ExportedLibraries libraries;
        SceneBuilder scene;
        // The range must be longer than the object's validity, even for one frame.
        scene.animation_ticks(0, (frames - 1) * kFrame + kFrame / 2);
        add_leaf(scene, rising({{0, square()}}), has_uv);
        const std::string text = exported(scene);
        ASSERT_THAT(libraries.names(), ElementsAre("Leaf_Stone.qorT"));
        EXPECT_EQ(blocks_of(text), kGroup + kInLibrary);
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
        const int data_end = 64 + 2 * 12 + frames * (40 + 4 * 24) + (has_uv ? 4 * 8 : 0);
        EXPECT_EQ(library.header, qort_bytes::header(true, {0, 0, 0, 1, 1, height(frames - 1)},
                                                     static_cast<std::uint32_t>(data_end)));
    }
}

std::string frames_from(int first, int last) {
    std::string blocks = kGroup + "animation \"deformable\" \"Leaf_deformable\" {\n";
    for (int frame = first; frame <= last; ++frame) {
        blocks += "object \"qor_deform_" + std::to_string(frame) + "\" {\n";
    }
    return blocks;
}

// `blocks` follow the node's own group, and `times` are the timestamps of the last part.
void expect_parts(std::vector<MeshKey> keys, const std::vector<std::string>& names,
                  const std::string& blocks, const std::vector<float>& times) {
    const ExportedLibraries libraries;
    SceneBuilder scene;
    scene.animation_frames(0, 6);
    add_leaf(scene, rising(keys));
    const std::string text = exported(scene);
    EXPECT_EQ(libraries.names(), names);
    EXPECT_EQ(blocks_of(text), kGroup + blocks);
    EXPECT_THAT(text, HasSubstr(array_text("timestamps", 'f', times)));
    EXPECT_THAT(text, HasSubstr("\"start_time\" 0,\n\"duration\" 0.231,\n\"duration_org\" 0.231"));
}

TEST(DeformableExport, ChoosesTheFormOfEachPart) {
    const MeshKey rest = {0, square({0, 1})};
    const MeshKey larger = {5 * kFrame,  // in the second part
                            MeshBuilder(kCorners, {{0, 1, 2}, {0, 2, 3}, {2, 1, 0}})
                                .groups({1})
                                .material_ids({0, 1, 1})};
    const std::vector<float> times = {0, 33, 66, 99, 132, 165, 198};
    expect_parts({{0, square()}, {5 * kFrame, turned_square()}}, {}, frames_from(0, 6), times);
    expect_parts({rest, larger}, {"Leaf_Stone.qorT"}, kInLibrary + frames_from(0, 6), times);
    // The second part comes late, and both parts change.
    expect_parts({{0, turned_square()}, {3 * kFrame, rest.mesh}, larger}, {},
                 frames_from(0, 6) + frames_from(3, 6), {99, 132, 165, 198});
}

// A late part's frames keep their numbers in the range, but its vertices are counted from its
// start.
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

TEST(DeformableExport, LeavesOutFramesWithAnotherMeshsVertices) {
    const ExportedLibraries libraries;
    SceneBuilder scene;
    scene.animation_frames(0, 6);
    MeshBuilder broken({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, {{0, 1, 2}, {0, 2, 3}});
    add_leaf(scene, rising({{0, square()}, {2 * kFrame, broken}, {4 * kFrame, square()}}));
    exported(scene);
    const LibraryArrays library(libraries.paths().front());
    ASSERT_EQ(library.frames.size(), 5u);
    EXPECT_EQ(library.frames[2].number, 4u);
    EXPECT_EQ(library.vertices[11], (LibraryArrays::Vector{0, 1, height(4)}));
}

TEST(DeformableExport, KeepsWrittenFramesOnACancelAndFreesConvertedMeshes) {
    const int conversions = ConvertibleObject::live_conversions();
    std::vector<size_t> frames;
    for (int poll = 1; poll < 14; ++poll) {
        const ExportedLibraries libraries;
        SceneBuilder scene;
        scene.animation_frames(0, 9).node(L"Leaf").object(
            std::make_shared<DeformingConvertible>(rising({{0, square()}}), Class_ID(0x10, 0)));
        scene.host().cancel_at_poll(poll);
        const std::string text = exported(scene);
        EXPECT_EQ(std::count(text.begin(), text.end(), '{'),
                  std::count(text.begin(), text.end(), '}'));
        frames.push_back(
            libraries.paths().empty() ? 0 : LibraryArrays(libraries.paths().front()).frames.size());
    }
    // The first poll is the walk's, and the second one the first frame's.
    EXPECT_THAT(frames, ElementsAre(0, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 10));
    EXPECT_EQ(ConvertibleObject::live_conversions(), conversions);
}

TEST(DeformableExport, NeverOverwritesALibrary) {
    const ExportedLibraries libraries;
    SceneBuilder scene;
    scene.animation_frames(0, 2);
    scene
        .node(L"Box/01\u4e00")  // the low byte of the last character is 0
        .deforming(rising({{0, square()}}))
        .material(scene.make<StandardMaterial>(L"Metal:A"));
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
    // A file in place of the folder acts as a folder that isn't writable.
    std::ofstream(libraries.animations()) << "not a folder";
    expect_failure(library);
    fs::remove(libraries.animations());
    fs::create_directory(libraries.animations());
}

}  // namespace
