#include <gtest/gtest.h>

#include "plugins/3dsmax/export/asset_files.h"
#include "plugins/3dsmax/export/frame_timing.h"
#include "plugins/3dsmax/export/narrow_name.h"
#include "plugins/3dsmax/export/renderer_textures.h"
#include "plugins/3dsmax/export/unit_scale.h"
#include "standins/host/memory/scene_builder.h"
#include "tests/support/registry_entries.h"
#include "tests/support/temporary_folder.h"

namespace {

using memhost::SceneBuilder;

TEST(UnitScale, IsTheNumberOfSystemUnitsInAMetre) {
    const std::pair<int, float> units[] = {
        {UNITS_INCHES, 39.37008f},    {UNITS_FEET, 3.28084f},
        {UNITS_MILES, 1 / 1609.344f}, {UNITS_MILLIMETERS, 1000.0f},
        {UNITS_CENTIMETERS, 100.0f},  {UNITS_METERS, 1.0f},
        {UNITS_KILOMETERS, 0.001f},   {99, 1.0f},
    };
    for (const auto& [unit, scale] : units) {
        SceneBuilder scene;
        scene.unit(unit, 7.0f);  // the host's own scale has no effect
        EXPECT_EQ(GetUnitScale(), scale) << unit;
    }
}

// A track must end even if the host's frames have no length.
TEST(FrameTiming, WithoutAFrameLengthTheRangeIsOneFrame) {
    for (const int ticks_per_frame : {0, -160}) {
        const FrameTiming timing = {800, 2400, 0, ticks_per_frame};
        std::vector<int> timestamps;
        for (const TimeValue t : timing.Times()) {
            timestamps.push_back(timing.KeyTimestamp(t));
        }
        EXPECT_EQ(timestamps, std::vector<int>{0});
        EXPECT_EQ(timing.TrackDuration(), 0.033f);
    }
}

TEST(NarrowName, KeepsTheLowByteOfEachUnit) {
    EXPECT_EQ(NarrowName(L"Box\u00e9\u0141"), "Box\xe9\x41");
    EXPECT_EQ(NarrowName(nullptr), "");
    // A unit whose low byte is zero doesn't end the name.
    EXPECT_EQ(NarrowName(L"a\u0100b"), std::string("a\0b", 3));
    EXPECT_EQ(NarrowName(std::wstring(1023, L'x').c_str()).size(), 1023u);
    EXPECT_EQ(NarrowName(std::wstring(1024, L'x').c_str()).size(), 1023u);
}

TEST(AssetFiles, AreFoundByPathOrInTheFoldersInOrder) {
    const TemporaryFolder folder;
    for (const char* name : {"here.ies", "a/both.ies", "b/both.ies", "b/\xc3\xa9.ies"}) {
        const auto path = folder.path() / std::filesystem::u8path(name);
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path) << "x";
    }
    const std::wstring a = (folder.path() / "a").wstring();
    const std::wstring b = (folder.path() / "b").wstring() + L"\\";
    SceneBuilder scene;
    scene.asset_folder(MaxSDK::AssetManagement::kPhotometricAsset, a);
    scene.asset_folder(MaxSDK::AssetManagement::kPhotometricAsset, b);

    const std::wstring here = (folder.path() / "here.ies").wstring();
    const std::pair<std::wstring, std::wstring> files[] = {
        {here, here},
        {L"both.ies", a + L"\\both.ies"},
        {L"\u00e9.ies", b + L"\u00e9.ies"},
        {L"missing.ies", L""},
    };
    for (const auto& [name, found] : files) {
        EXPECT_TRUE(FindAssetFile(&scene.host(), 3, name) == found) << NarrowName(name.c_str());
    }
    EXPECT_TRUE(FindAssetFile(&scene.host(), 4, L"both.ies").empty());
}

TEST(RendererTextures, AreInTheResourceFolderOfTheInstallation) {
    constexpr char kKey[] = "SOFTWARE\\Quoria\\Velmora 11";
    const struct {
        std::vector<RegistryEntry> entries;
        const char* folder;
    } registries[] = {
        {{{"HKEY_LOCAL_MACHINE", kKey, "ResourceFolder", "\"C:\\\\Velmora\""}},
         "C:\\Velmora/textures/"},
        {{{"HKEY_LOCAL_MACHINE", kKey, "ResourceFolder", "dword:00000001"}}, "/textures/"},
        {{{"HKEY_CURRENT_USER", kKey, "ResourceFolder", "\"C:\\\\Velmora\""}}, "/textures/"},
        {{{"HKEY_LOCAL_MACHINE", kKey, "BinFolder", "\"C:\\\\Velmora\""}}, "/textures/"},
        {{}, "/textures/"},
    };
    for (const auto& registry : registries) {
        const RegistryEntries entries(registry.entries);
        EXPECT_EQ(GetRendererTexturesFolder(), registry.folder);
    }
}

}  // namespace
