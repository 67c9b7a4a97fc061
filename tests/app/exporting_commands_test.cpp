#include "standins/host/app/exporting_commands.h"

#include <gtest/gtest.h>

#include "standins/host/memory/scene_builder.h"
#include "tests/support/temporary_folder.h"

namespace {

using memhost::SceneBuilder;

std::optional<app::ExportReport> export_to(SceneBuilder& scene, const std::string& path) {
    app::PluginCommands plugin(scene.host());
    return app::export_scene(scene.host(), plugin, app::Interruption(scene.host()), path);
}

TEST(ExportCommand, SaysWhatItWrote) {
    const TemporaryFolder folder;
    SceneBuilder scene;
    scene.node(L"a").child(L"b");
    const std::optional<app::ExportReport> report = export_to(scene, folder / "s.vsq");
    EXPECT_NE(report.value().summary.find(" s\n  2 groups, 0 objects, "), std::string::npos)
        << report->summary;
    EXPECT_EQ(report->brief, "0 objects, 0 cameras, 2 matrices of nodes");
    EXPECT_EQ(report->warnings, "");
}

TEST(ExportCommand, FailsWithWhatAMessageBoxTold) {
    const TemporaryFolder folder;
    const std::string missing = folder / "missing" + "/s.vsq";
    std::vector<std::pair<std::string, std::string>> targets = {
        {missing, missing + ": could not open file: \"" + missing + "\""}};
#ifndef _WIN32
    targets.push_back({"/dev/full", "/dev/full: could not close file"});
#endif
    for (const auto& [target, text] : targets) {
        SceneBuilder scene;
        try {
            export_to(scene, target);
            FAIL() << target << " was written";
        } catch (const std::runtime_error& error) {
            EXPECT_EQ(error.what(), text);
        }
    }
}

TEST(ExportReport, WarnsOfMatricesThatAreNone) {
    const TemporaryFolder folder;
    SceneBuilder scene;
    Matrix3 invalid;
    invalid.SetRow(0, Point3(std::numeric_limits<float>::infinity(), 0, 0));
    scene.node(L"a").transform(invalid);
    EXPECT_EQ(export_to(scene, folder / "s.vsq").value().warnings,
              "1 matrix holds a number that is not finite\n");
}

TEST(ExportReport, RefusesAFileThatIsNotWhole) {
    const TemporaryFolder folder;
    SceneBuilder scene;
    scene.node(L"a");
    EXPECT_TRUE(export_to(scene, folder / "s.vsq").has_value());
    const std::string text = file_contents(folder / "s.vsq");
    std::ofstream(folder.path() / "cut.vsq", std::ios::binary) << text.substr(0, text.size() - 3);
    EXPECT_THROW(app::report_on_file(folder / "cut.vsq", 0), std::runtime_error);
}

}  // namespace
