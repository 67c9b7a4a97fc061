#include "plugins/3dsmax/export/options.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "standins/host/memory/host_text.h"
#include "standins/host/memory/memory_host.h"
#include "tests/support/temporary_folder.h"

namespace {

using Qor::Options;

class SettingsFile : public testing::Test {
protected:
    SettingsFile() { host_.set_config_folder(memhost::units_from_utf8(folder_.path().u8string())); }

    std::string path() const { return folder_ / "velmoraexport7.ini"; }

    void write(const std::string& text) { std::ofstream(std::filesystem::u8path(path())) << text; }

    // The lines of the file without their ends.
    std::string saved_lines() const {
        std::string text = file_contents(path());
        text.erase(std::remove_if(text.begin(), text.end(), [](char c) { return c < ' '; }),
                   text.end());
        return text;
    }

    TemporaryFolder folder_;
    memhost::MemoryHost host_;
};

// In each round one setting is on, and all others are off.
TEST_F(SettingsFile, HasItsOwnPlaceForEachSetting) {
    const std::pair<const char*, bool Options::*> fields[] = {
        {"[Curves]HairAndFur=", &Options::HairAndFur},
        {"GeneralCurves=", &Options::GeneralCurves},
        {"[Lights]PhotometricLights=", &Options::PhotometricLights},
        {"SkyLights=", &Options::SkyLights},
        {"[Animation]Bones=", &Options::Bones},
        {"TransformAnimations=", &Options::TransformAnimations},
        {"CameraAnimations=", &Options::CameraAnimations},
        {"Deformable=", &Options::Deformable},
        {"[General]cameras=", &Options::cameras},
        {"Layers=", &Options::Layers},
    };
    for (const auto& on : fields) {
        std::string wanted;
        Options options(&host_);
        for (const auto& [line, field] : fields) {
            options.*field = field == on.second;
            wanted += line + std::to_string(options.*field);
        }
        options.Save();
        EXPECT_EQ(saved_lines(), wanted);
        const Options loaded(&host_);
        for (const auto& [line, field] : fields) {
            EXPECT_EQ(loaded.*field, field == on.second) << line << wanted;
        }
    }
}

TEST_F(SettingsFile, ReadsOnlyOneAsTrue) {
    for (const std::string text : {"1", "0", "", "2", "true", "-1", "01", "11"}) {
        write("[General]\ncameras=" + text + "\nLayers=" + text + "\n");
        const Options options(&host_);
        EXPECT_EQ(options.cameras, text == "1") << text;
        EXPECT_EQ(options.Layers, text == "1") << text;
    }
}

TEST_F(SettingsFile, KeepsTheFlagsAndNotTheMultiplier) {
    Options options(&host_);
    options.HairAndFur = false;
    options.Layers = true;
    options.CurveRadiusMultiplier = 3;
    EXPECT_EQ(file_contents(path()), "") << "written without Save";
    options.Save();
    EXPECT_EQ(Options(&host_).CurveRadiusMultiplier, 1);
    std::filesystem::remove(std::filesystem::u8path(path()));
    EXPECT_EQ(options.Load(), 0);
    EXPECT_TRUE(options.HairAndFur && !options.Layers) << "the defaults";
}

TEST(Options, FindTheirFileInTheConfigurationFolder) {
    const std::wstring name = L"velmoraexport7.ini";
    const std::wstring longest(Qor::kSettingsPathSize - 1 - 1 - name.size(), L'x');
    const struct {
        std::wstring folder;
        std::wstring path;
    } cases[] = {
        {L"", name},
        {L"C:\\cfg", L"C:\\cfg\\" + name},
        {L"C:\\cfg\\", L"C:\\cfg\\" + name},
        {longest, longest + L"\\" + name},
        {longest + L"x", L""},
        {std::wstring(5000, L'x'), L""},
    };
    for (const auto& [folder, wanted] : cases) {
        SCOPED_TRACE("a folder of " + std::to_string(folder.size()) + " characters");
        memhost::MemoryHost host;
        host.set_config_folder(folder);
        const Options options(&host);
        std::wstring buffer(Qor::kSettingsPathSize + 1, L'#');
        options.GetSettingsPath(buffer.data());
        EXPECT_EQ(buffer.c_str(), wanted);
        EXPECT_EQ(buffer.back(), L'#');
        if (wanted.empty()) {
            options.Save();  // writes nothing
            EXPECT_TRUE(options.HairAndFur && !options.Layers);
        }
    }
}

}  // namespace
