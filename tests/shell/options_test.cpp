#include "plugins/3dsmax/export/options.h"

#include <gtest/gtest.h>

#include "standins/host/memory/host_text.h"
#include "standins/host/memory/memory_host.h"
#include "tests/support/temporary_folder.h"

namespace {

using Qor::Options;

// The settings as the file has them, apart from the table that the product reads them by.
const struct {
    const char* section;
    const char* key;
    bool initially;
    bool Options::*field;
} kSettings[] = {
    {"Curves", "HairAndFur", true, &Options::HairAndFur},
    {"Curves", "GeneralCurves", false, &Options::GeneralCurves},
    {"Lights", "PhotometricLights", true, &Options::PhotometricLights},
    {"Lights", "SkyLights", true, &Options::SkyLights},
    {"Animation", "Bones", true, &Options::Bones},
    {"Animation", "TransformAnimations", true, &Options::TransformAnimations},
    {"Animation", "CameraAnimations", true, &Options::CameraAnimations},
    {"Animation", "Deformable", true, &Options::Deformable},
    {"General", "cameras", true, &Options::cameras},
    {"General", "Layers", false, &Options::Layers},
};

class SettingsFile : public testing::Test {
protected:
    SettingsFile() { host_.set_config_folder(memhost::units_from_utf8(folder_.path().u8string())); }

    std::string path() const { return folder_ / "velmoraexport7.ini"; }

    void write(const std::string& text) { std::ofstream(std::filesystem::u8path(path())) << text; }

    TemporaryFolder folder_;
    memhost::MemoryHost host_;
};

// One key stands in the file, and all others are missing.
TEST_F(SettingsFile, HoldsEachSettingUnderItsKey) {
    for (const auto& written : kSettings) {
        write(std::string("[") + written.section + "]\n" + written.key +
              (written.initially ? "=0\n" : "=1\n"));
        const Options options(&host_);
        for (const auto& setting : kSettings) {
            const bool changed = &setting == &written;
            EXPECT_EQ(options.*setting.field, setting.initially != changed)
                << setting.key << " with " << written.key << " in the file";
        }
    }
}

TEST_F(SettingsFile, TakesJustOneForTrue) {
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
    Options options(&host_);
    for (const auto& setting : kSettings) {
        options.*setting.field = !setting.initially;
    }
    options.CurveRadiusMultiplier = 3;
    EXPECT_EQ(file_contents(path()), "") << "written before it was saved";
    options.Save();

    const Options loaded(&host_);
    for (const auto& setting : kSettings) {
        EXPECT_EQ(loaded.*setting.field, !setting.initially) << setting.key;
    }
    EXPECT_EQ(loaded.CurveRadiusMultiplier, 1);

    std::filesystem::remove(std::filesystem::u8path(path()));
    EXPECT_EQ(options.Load(), 0);
    for (const auto& setting : kSettings) {
        EXPECT_EQ(options.*setting.field, setting.initially) << setting.key;
    }
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
            options.Save();  // nowhere
            EXPECT_TRUE(options.HairAndFur && !options.Layers);
        }
    }
}

}  // namespace
