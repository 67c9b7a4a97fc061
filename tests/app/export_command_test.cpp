#include "standins/host/app/export_command.h"

#include <gtest/gtest.h>

#include "platform/message_box.h"
#include "standins/host/app/export_report.h"
#include "standins/host/memory/scene_builder.h"
#include "tests/support/temporary_folder.h"

namespace {

using memhost::SceneBuilder;

// What the user was told while the object lives.
class Told {
public:
    Told() {
        platform::set_message_box_handler(
            [this](const std::string& text, const std::string& title, std::uint32_t style) {
                texts += title + "|" + text + "|" + std::to_string(style) + "\n";
            });
    }
    ~Told() { platform::set_message_box_handler({}); }

    std::string texts;
};

bool export_to(SceneBuilder& scene, const std::string& path) {
    return app::run_export_command(&scene.host(), std::make_shared<Qor::Options>(&scene.host()),
                                   path);
}

TEST(ExportCommand, WritesTheSceneWithTheBarUpForAsLong) {
    const TemporaryFolder folder;
    const Told told;
    SceneBuilder scene;
    scene.node(L"a").child(L"b");
    EXPECT_TRUE(export_to(scene, folder / "s.vsq"));
    EXPECT_EQ(told.texts, "");
    EXPECT_EQ(scene.host().progress().started, 1);
    EXPECT_EQ(scene.host().progress().ended, 1);

    const app::ExportReport report = app::report_on_file(folder / "s.vsq", 1.5);
    EXPECT_NE(report.summary.find(" in 1.50 s\n  2 groups, 0 objects, "), std::string::npos)
        << report.summary;
    EXPECT_EQ(report.warnings, "");
}

TEST(ExportCommand, TellsInABoxWhatCouldNotBeWritten) {
    const TemporaryFolder folder;
    const std::string missing = folder / "missing" + "/s.vsq";
    std::vector<std::pair<std::string, std::string>> targets = {
        {missing, "Error|could not open file: \"" + missing + "\"|16\n"}};
#ifndef _WIN32
    targets.push_back({"/dev/full", "Error|could not close file|16\n"});
#endif
    for (const auto& [target, text] : targets) {
        const Told told;
        SceneBuilder scene;
        EXPECT_FALSE(export_to(scene, target));
        EXPECT_EQ(told.texts, text);
        EXPECT_EQ(scene.host().progress().ended, 1);
    }
}

TEST(ExportReport, WarnsOfMatricesThatAreNone) {
    const TemporaryFolder folder;
    SceneBuilder scene;
    Matrix3 invalid;
    invalid.SetRow(0, Point3(std::numeric_limits<float>::infinity(), 0, 0));
    scene.node(L"a").transform(invalid);
    EXPECT_TRUE(export_to(scene, folder / "s.vsq"));
    EXPECT_EQ(app::report_on_file(folder / "s.vsq", 0).warnings,
              "1 matrix holds a number that is not finite\n");
}

TEST(ExportReport, RefusesAFileThatIsNotWhole) {
    const TemporaryFolder folder;
    SceneBuilder scene;
    scene.node(L"a");
    EXPECT_TRUE(export_to(scene, folder / "s.vsq"));
    const std::string text = file_contents(folder / "s.vsq");
    std::ofstream(folder.path() / "cut.vsq", std::ios::binary) << text.substr(0, text.size() - 3);
    EXPECT_THROW(app::report_on_file(folder / "cut.vsq", 0), std::runtime_error);
}

}  // namespace
