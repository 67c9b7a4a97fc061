#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "plugins/3dsmax/export/scene_exporter.h"
#include "standins/host/memory/scene_builder.h"
#include "tests/support/temporary_folder.h"
#include "tools/vsqinfo/vsq_reader.h"

namespace {

using memhost::SceneBuilder;
using Names = std::set<std::string>;

constexpr int kFrame = memhost::kDefaultTicksPerFrame;

// A box and a camera that move by one unit per tick.
void build(SceneBuilder& scene) {
    const auto ride = [](TimeValue t) { return memhost::translation(0, 0, static_cast<float>(t)); };
    scene.node(L"Box").motion(ride).mesh(memhost::box_mesh(1, 1, 1));
    scene.node(L"Camera").motion(ride).camera();
}

std::shared_ptr<Qor::Options> export_animation(SceneBuilder& scene, const std::string& path) {
    const auto options = std::make_shared<Qor::Options>(&scene.host());
    SceneExporter exporter(&scene.host(), scene.host().GetRootNode(), options, {});
    EXPECT_TRUE(exporter.Run(path, false, true, true));
    return options;
}

Names names_in(const std::filesystem::path& folder) {
    Names names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        names.insert(entry.path().filename().u8string());
    }
    return names;
}

TEST(AnimationExport, WritesAStillForEachFrame) {
    const TemporaryFolder folder;
    SceneBuilder scene;
    build(scene);
    scene.animation_frames(5, 7);
    const auto options = export_animation(scene, folder / "shot.vsq");
    EXPECT_EQ(names_in(folder.path()),
              (Names{"shot.py", "shot0000.vsq", "shot0001.vsq", "shot0002.vsq"}));

    for (int i = 0; i < 3; ++i) {
        const std::string path = folder / "shot000" + std::to_string(i) + ".vsq";
        const vsqinfo::VsqSummary summary = vsqinfo::read_vsq_file(path);
        // A mesh that hasn't changed since the frame before isn't written again.
        EXPECT_EQ(summary.objects, i == 0 ? 1u : 0u);
        const auto& module = summary.modules.at(0).options;
        for (const char* option : {"import_adjust_camera", "import_adjust_environment"}) {
            const std::pair<std::string, std::string> expected(option, i == 0 ? "on" : "off");
            EXPECT_EQ(std::count(module.begin(), module.end(), expected), 1) << option << i;
        }
    }
    EXPECT_EQ(scene.host().time(), 7 * kFrame);
    EXPECT_FALSE(options->TransformAnimations);
    EXPECT_FALSE(options->CameraAnimations);

    const std::vector<int>& percents = scene.host().progress().percents;
    EXPECT_TRUE(std::is_sorted(percents.begin(), percents.end()));
    EXPECT_LT(percents.at(percents.size() / 3 - 1), 34);
    EXPECT_EQ(percents.back(), 100);
}

TEST(AnimationExport, CountsWholeFramesAndNumbersThemFrom0) {
    const struct {
        TimeValue first, last;
        const char* end;
        Names names;
    } ranges[] = {
        {3 * kFrame, 3 * kFrame, "0", {"s.py", "s0000.vsq"}},
        {0, 2 * kFrame - 1, "1", {"s.py", "s0000.vsq", "s0001.vsq"}},
        {-kFrame, 0, "1", {"s.py", "s0000.vsq", "s0001.vsq"}},
        {5 * kFrame, 0, "-5", {"s.py"}},
    };
    for (const auto& range : ranges) {
        const TemporaryFolder folder;
        SceneBuilder scene;
        scene.animation_ticks(range.first, range.last);
        export_animation(scene, folder / "s.vsq");
        EXPECT_EQ(names_in(folder.path()), range.names);
        const std::string script = file_contents(folder / "s.py");
        EXPECT_NE(script.find("\n    end = " + std::string(range.end)), std::string::npos);
    }
}

#ifndef _WIN32  // on Windows a backslash separates folders
TEST(AnimationExport, RemovesFourCharactersFromAnyPath) {
    const TemporaryFolder folder;
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    for (const char* path : {"", "abc", "film.max", "a\\b.vsq"}) {
        SceneBuilder scene;
        scene.animation_ticks(0, 0);
        export_animation(scene, path);
    }
    std::filesystem::current_path(before);
    EXPECT_EQ(names_in(folder.path()),
              (Names{".py", "0000.vsq", "film.py", "film0000.vsq", "a\\b.py", "a\\b0000.vsq"}));
    EXPECT_NE(file_contents(folder / "a\\b.py").find("path = \"a/b\" + "), std::string::npos);
}
#endif

// Each frame polls once before its walk, and the walk over two nodes twice.
TEST(AnimationExport, KeepsWrittenFramesOnACancel) {
    const struct {
        int poll;
        Names names;
    } cases[] = {
        {1, {"s.py"}},
        {2, {"s.py", "s0000.vsq"}},
        {4, {"s.py", "s0000.vsq"}},
        {5, {"s.py", "s0000.vsq", "s0001.vsq"}},
    };
    for (const auto& test : cases) {
        const TemporaryFolder folder;
        SceneBuilder scene;
        build(scene);
        scene.host().cancel_at_poll(test.poll);
        export_animation(scene, folder / "s.vsq");
        EXPECT_EQ(names_in(folder.path()), test.names) << test.poll;
        for (const std::string& name : test.names) {
            if (name != "s.py") {
                EXPECT_NO_THROW(vsqinfo::read_vsq_file(folder / name)) << test.poll;
            }
        }
    }
}

}  // namespace
