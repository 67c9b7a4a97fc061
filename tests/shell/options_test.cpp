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
    bool Options::*const fields[] = {&Options::HairAndFur,
                                     &Options::GeneralCurves,
                                     &Options::PhotometricLights,
                                     &Options::SkyLights,
                                     &Options::Bones,
                                     &Options::TransformAnimations,
                                     &Options::CameraAnimations,
                                     &Options::Deformable,
                                     &Options::cameras,
                                     &Options::Layers};
    for (size_t on = 0; on < std::size(fields); ++on) {
        std::string wanted(std::size(fields), '0');
        wanted[on] = '1';
        Options options(&host_);
        for (bool Options::*const field : fields) {
            options.*field = field == fields[on];
        }
        options.Save();
        std::string values = saved_lines();
        values.erase(std::remove_if(values.begin(), values.end(),
                                    [](char c) { return c != '0' && c != '1'; }),
                     values.end());
        EXPECT_EQ(values, wanted);
        const Options loaded(&host_);
        for (bool Options::*const field : fields) {
            EXPECT_EQ(loaded.*field, field == fields[on]) << wanted;
        }
    }
}

TEST_F(SettingsFile, ReadsOnlyOneAsTrue) {
    const struct {
        const char* text;
        bool value;
    } values[] = {{"1", true},     {"0", false},  {"", false},   {"2", false},
                  {"true", false}, {"-1", false}, {"01", false}, {"11", false}};
    for (const auto& [text, value] : values) {
        write(std::string("[General]\ncameras=") + text + "\nLayers=" + text + "\n");
        const Options options(&host_);
        EXPECT_EQ(options.cameras, value) << text;
        EXPECT_EQ(options.Layers, value) << text;
    }
}

TEST_F(SettingsFile, KeepsTheFlagsAndNotTheMultiplier) {
    const std::string text =
        "[Curves]HairAndFur=0GeneralCurves=1[Lights]PhotometricLights=0SkyLights=1"
        "[Animation]Bones=0TransformAnimations=1CameraAnimations=0Deformable=1"
        "[General]cameras=0Layers=1";
    Options options(&host_);
    options.HairAndFur = options.PhotometricLights = options.Bones = false;
    options.CameraAnimations = options.cameras = false;
    options.GeneralCurves = options.Layers = true;
    options.CurveRadiusMultiplier = 3;
    EXPECT_EQ(file_contents(path()), "") << "written without Save";
    options.Save();
    EXPECT_EQ(saved_lines(), text);

    const Options loaded(&host_);
    EXPECT_EQ(loaded.CurveRadiusMultiplier, 1);
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
