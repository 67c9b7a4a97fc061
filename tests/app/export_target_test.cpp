#include "standins/host/app/export_target.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "standins/host/app/scene_source.h"
#include "tests/support/temporary_folder.h"

namespace {

std::string refusal(const std::string& target, const std::string& source) {
    try {
        app::check_export_target(target, source);
        return "";
    } catch (const std::runtime_error& error) {
        return error.what();
    }
}

TEST(ExportTarget, IsCheckedBeforeTheExport) {
    const TemporaryFolder folder;
    const std::string model = folder / "model.obj";
    std::ofstream(std::filesystem::u8path(model), std::ios::binary) << "v 0 0 0\n";
    const std::string there = folder.path().u8string();
    const struct {
        std::string target;
        std::string refusal;
    } targets[] = {
        {"-", ""},
        {folder / "new.vsq", ""},
        {"", "the name of the scene file is empty"},
        {there, there + ": cannot be written: it is a folder"},
        {folder / "none" + "/s.vsq",
         folder / "none" + "/s.vsq: cannot be written: there is no folder " + folder / "none"},
        {model, model + ": cannot be written: it is the scene to be exported"},
    };
    for (const auto& target : targets) {
        EXPECT_EQ(refusal(target.target, model), target.refusal);
    }
    EXPECT_EQ(file_contents(model), "v 0 0 0\n");
}

TEST(SceneSource, NamesTheDemoScenesWhereOneIsUnknown) {
    memhost::SceneBuilder scene;
    try {
        app::load_scene("demo:none", scene);
        FAIL() << "an unknown demo scene was loaded";
    } catch (const std::runtime_error& error) {
        EXPECT_NE(std::string(error.what()).find("'none' (there are: hierarchy"), std::string::npos)
            << error.what();
    }
}

}  // namespace
