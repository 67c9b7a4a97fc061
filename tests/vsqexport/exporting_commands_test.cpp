#include "tools/vsqexport/exporting_commands.h"

#include <gmock/gmock.h>

#include <csignal>
#include <filesystem>
#include <utility>

#include "platform/files.h"
#include "standins/host/memory/scene_builder.h"
#include "tests/support/qort_bytes.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/thrown_text.h"
#include "tools/vsqexport/export_target.h"
#include "tools/vsqexport/interruption.h"
#include "tools/vsqexport/settings_file.h"
#include "tools/vsqinfo/vsq_reader.h"

namespace {

using memhost::SceneBuilder;
using testing::HasSubstr;

// Runs a command of the host with its own settings.
template <typename Command>
auto carry_out(const Command& command, SceneBuilder& scene, const std::string& path,
               const char* setting = "Layers=0") {
    const TemporaryFolder settings;
    vsqexport::change_settings(settings.path().u8string(), {setting});
    vsqexport::PluginCommands plugin(scene.host(), settings.path().u8string());
    const vsqexport::Interruption interruption(scene.host());
    return command(scene.host(), plugin, path);
}

auto export_scene(memhost::MemoryHost& host, vsqexport::PluginCommands& plugin,
                  const std::string& path) {
    return vsqexport::export_scene(host, plugin, path);
}

vsqexport::ExportReport export_all_frames(memhost::MemoryHost& host,
                                          vsqexport::PluginCommands& plugin,
                                          const std::string& path) {
    return vsqexport::export_animation(host, plugin, path);
}

TEST(ExportReport, WarnsAboutMatricesThatAreNotFiniteAndRefusesACutFile) {
    const TemporaryFolder folder;
    SceneBuilder scene;
    Matrix3 invalid;
    invalid.SetRow(0, Point3(std::numeric_limits<float>::infinity(), 0, 0));
    scene.node(L"a").transform(invalid);
    const auto report = carry_out(export_scene, scene, folder / "s.vsq");
    EXPECT_EQ(report.value().warnings, "1 matrix holds a number that is not finite\n");
    std::filesystem::resize_file(folder.path() / "s.vsq",
                                 file_contents(folder / "s.vsq").size() - 3);
    EXPECT_THROW(vsqexport::report_on_file(folder / "s.vsq", 0), std::runtime_error);
}

TEST(ExportTarget, IsCheckedWithoutBeingChanged) {
    const TemporaryFolder folder;
    std::ofstream(folder.path() / "old") << "//---quoria:dal:7---";
    std::ofstream(folder.path() / "foreign") << "old";
    vsqexport::check_export_target(folder / "old", "demo:hierarchy");
    vsqexport::check_export_target(folder / "new", "demo:hierarchy");
    vsqexport::check_export_target(folder / "foreign", "demo:hierarchy", true);
    EXPECT_EQ(
        thrown_text([&] { vsqexport::check_export_target(folder / "foreign", "demo:hierarchy"); }),
        folder / "foreign" +
            ": cannot be written: it is not a scene of an earlier export "
            "(--force replaces it)");
    EXPECT_EQ(file_contents(folder / "foreign"), "old");
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "new"));
}

TEST(AnimationCommand, ReportsWhatItWrote) {
    const TemporaryFolder folder;
    SceneBuilder scene;
    scene.node(L"a");
    scene.animation_frames(0, 2);
    const vsqexport::ExportReport report = carry_out(export_all_frames, scene, folder / "s.VSQ");
    const std::string names = folder / "s0000.vsq" + " to " + folder / "s0002.vsq";
    EXPECT_THAT(report.summary, testing::StartsWith(names + ": 3 frames, "));
    EXPECT_THAT(report.summary, HasSubstr(" s\n  the first: 1 group, 0 objects, "));
    EXPECT_THAT(report.summary,
                HasSubstr("\n  " + folder / "s.py" + ": renders the frames 1 to 2\n"));
    EXPECT_EQ(report.warnings, "");
}

TEST(AnimationCommand, NamesTheFrameThatFailed) {
    const TemporaryFolder folder;
    SceneBuilder scene;
    std::filesystem::create_directory(folder.path() / "s0002.vsq");
    EXPECT_THAT(thrown_text([&] { carry_out(export_all_frames, scene, folder / "s.vsq"); }),
                testing::StartsWith(folder / "s0002.vsq" + ": "));
}

// The plug-in itself doesn't report these failures.
TEST(AnimationCommand, FailsIfFilesAreMissing) {
    const TemporaryFolder folder;
    SceneBuilder scene;
    scene.animation_frames(0, 1);
    const auto check = [&](int last_frame) {
        const vsqexport::AnimationFiles files(folder / "s.vsq");
        return thrown_text([&] {
            vsqexport::report_on_animation(vsqexport::whole_animation(files, last_frame), 0);
        });
    };
    const std::string script = folder / "s.py";
    EXPECT_EQ(check(1), script + ": the script was not written");
    carry_out(export_all_frames, scene, folder / "s.vsq");
    EXPECT_EQ(check(1), "");
    EXPECT_EQ(check(2), script + ": the script was not written");  // this one is older
    std::filesystem::remove(folder.path() / "s0001.vsq");
    EXPECT_EQ(check(1), folder / "s0001.vsq" + ": does not exist");
    std::filesystem::resize_file(folder.path() / "s.py", file_contents(script).size() - 2);
    EXPECT_EQ(check(1), script + ": the script is incomplete");
    EXPECT_THROW(carry_out(export_all_frames, scene, folder / "s.py"), std::invalid_argument);
}

// Adds a node that presses Ctrl-C when it is read at that tick.
void add_interrupting_node(SceneBuilder& scene, TimeValue tick) {
    scene.node(L"a").motion([tick, is_stopped = false](TimeValue t) mutable {
        if (t == tick && !std::exchange(is_stopped, true)) {
            std::raise(SIGINT);
        }
        return Matrix3();
    });
}

// An export by layers doesn't poll for a cancel. The next command isn't cancelled.
TEST(ExportCommand, ReportsACancelIfThePluginPolledForIt) {
    const TemporaryFolder folder;
    const std::string target = folder / "s.vsq";
    const std::string partial = "cancelled, " + target + " was not written";
    const std::tuple<const char*, const char*, std::string> cases[] = {
        {"Layers=0", "", partial},
        {"Layers=0", "cancel-stays", partial},
        {"Layers=0", "cancel-at-updates,progress-refused", partial},
        {"Layers=1", "", ""},
    };
    for (const auto& [setting, rules, told] : cases) {
        SceneBuilder scene(rules);
        add_interrupting_node(scene, 0);
        scene.node(L"b");
        scene.node(L"c");
        for (const std::string& wanted : {told, std::string()}) {
            EXPECT_EQ(thrown_text<vsqexport::Cancelled>(
                          [&, &with = setting] { carry_out(export_scene, scene, target, with); }),
                      wanted)
                << rules;
        }
    }
}

TEST(AnimationCommand, NamesTheFrameThatACancelStopped) {
    const TemporaryFolder folder;
    SceneBuilder scene;
    add_interrupting_node(scene, 2 * scene.host().ticks_per_frame());
    EXPECT_EQ(thrown_text<vsqexport::Cancelled>(
                  [&] { carry_out(export_all_frames, scene, folder / "s.vsq"); }),
              "cancelled, " + folder / "s0001.vsq" + " is the last frame that is whole");
    EXPECT_THAT(file_contents(folder / "s.py"), HasSubstr("    end = 1"));
    const auto files = std::filesystem::directory_iterator(folder.path());
    EXPECT_EQ(std::distance(begin(files), end(files)), 3) << "nothing is left of the third";
}

// The plug-in writes a mesh only at the very tick at which it changes, here at the frames 3 and 8.
TEST(AnimationCommand, WritesMeshesThatChangeAtAFrameWhichIsLeftOut) {
    const TemporaryFolder folder;
    SceneBuilder scene;
    scene.animation_frames(0, 10);
    const int frame = scene.host().ticks_per_frame();
    const auto validity = [frame](TimeValue t) {
        return t < 3 * frame   ? Interval(TIME_NegInfinity, 3 * frame - 1)
               : t < 8 * frame ? Interval(3 * frame, 8 * frame - 1)
                               : Interval(8 * frame, TIME_PosInfinity);
    };
    memhost::DeformingMesh mesh(memhost::box_mesh(1, 1, 1));
    mesh.moves([](TimeValue, const Mesh& rest, Mesh& moved) { moved = rest; }, validity);
    scene.node(L"a").deforming(std::move(mesh));
    carry_out(
        [](memhost::MemoryHost& host, vsqexport::PluginCommands& plugin, const std::string& path) {
            vsqexport::AnimationOptions options;
            options.step = 2;
            return vsqexport::export_animation(host, plugin, path, options);
        },
        scene, folder / "s.vsq");
    std::vector<bool> has_mesh;
    for (int number = 0; number <= 10; number += 2) {
        const vsqexport::AnimationFiles files(folder / "s.vsq");
        has_mesh.push_back(vsqinfo::read_vsq_file(files.frame(number)).triangles > 0);
    }
    EXPECT_EQ(has_mesh, (std::vector<bool>{true, false, true, false, true, false}));
    EXPECT_EQ(scene.host().ticks_per_frame(), frame);
    EXPECT_EQ(scene.host().GetAnimRange().End(), 10 * frame);
}

// The writer of mesh files reports failures only on standard error. The file's name contains a byte
// that isn't valid UTF-8, as a node's name can.
TEST(ExportReport, RefusesASceneWhoseMeshFilesAreMissingOrMalformed) {
    const TemporaryFolder folder;
    const std::string mesh = folder / "m" + "\xe4.qorT";
    const std::string shown = folder / "m" + "\\xe4.qorT";
    const std::string refused = folder / "s.vsq" + ": its mesh file " + shown + ": ";
    std::string name = "xX";  // the scene's form of names that aren't ASCII
    for (const unsigned char byte : mesh) {
        name += {"0123456789abcdef"[byte / 16], "0123456789abcdef"[byte % 16]};
    }
    std::ofstream(folder.path() / "s.vsq", std::ios::binary)
        << "//---quoria:dal:7---\n//---import:dal:1---\n//---id:1---\n"
           "// This is a Velmora scene file\n\nversion 9\ngroup \"object\" {\nobject \"o\" {\n"
           "geometry \"triangles\" {\n\"file\" "
        << name << ",\n}\n}\n}\n";
    const auto check = [&] { return vsqexport::report_on_file(folder / "s.vsq", 0).summary; };
    EXPECT_EQ(thrown_text(check), refused + "does not exist");
    const auto write = [&](const std::string& bytes) {
        std::FILE* const file = platform::open_file(mesh, "wb");
        std::fwrite(bytes.data(), 1, bytes.size(), file);
        std::fclose(file);
    };
    using namespace qort_bytes;
    const std::string whole = header(false, {0, 0, 0, 1, 1, 0}, 64) + block(1, words({0, 1, 2})) +
                              block(2, floats({0, 0, 0, 1, 0, 0, 0, 1, 0}));
    write(whole.substr(0, 100));
    EXPECT_EQ(thrown_text(check),
              refused + "offset 100: the file ends inside the block of vertices");
    write(whole);
    EXPECT_THAT(check(), HasSubstr("\n  " + shown + ": 128 bytes, 0 frames, 1 triangle\n"));
}

}  // namespace
