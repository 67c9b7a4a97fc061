#include "tools/vsqexport/export_target.h"

#include <gmock/gmock.h>

#include "tests/support/temporary_folder.h"
#include "tests/support/thrown_text.h"
#include "tools/vsqexport/scene_source.h"

namespace {

std::string refusal(const std::string& target, const std::string& source) {
    return thrown_text([&] { vsqexport::check_export_target(target, source); });
}

TEST(ExportTarget, IsCheckedWithoutBeingChanged) {
    const TemporaryFolder folder;
    const std::string model = folder / "model.obj";
    std::ofstream(std::filesystem::u8path(model), std::ios::binary) << "v 0 0 0\n";
    const std::string there = folder.path().u8string();
    const std::pair<std::string, std::string> targets[] = {
        {"-", ""},
        {folder / "new.vsq", ""},
        {"", "the name of the scene file is empty"},
        {there, there + ": cannot be written: it is a folder"},
        {folder / "none" + "/s.vsq",
         folder / "none" + "/s.vsq: cannot be written: there is no folder " + folder / "none"},
        {model, model + ": cannot be written: it is the scene to be exported"},
    };
    for (const auto& [target, reason] : targets) {
        EXPECT_EQ(refusal(target, model), reason);
    }
    EXPECT_EQ(refusal(model, "demo:hierarchy"), "");
    EXPECT_EQ(file_contents(model), "v 0 0 0\n");
    EXPECT_FALSE(std::filesystem::exists(std::filesystem::u8path(folder / "new.vsq")));
}

TEST(SceneSource, ListsTheDemoScenesIfANameIsUnknown) {
    memhost::SceneBuilder scene;
    EXPECT_THAT(thrown_text([&] { vsqexport::load_scene("demo:none", scene); }),
                testing::HasSubstr("'none' (known: hierarchy"));
}

}  // namespace
