#include "plugins/3dsmax/export/texture_baking.h"

#include <gtest/gtest.h>

#include "plugins/3dsmax/export/material_entry.h"
#include "standins/host/memory/host_text.h"
#include "standins/host/memory/image_file.h"
#include "standins/host/memory/scene_builder.h"
#include "tests/support/emitted_calls.h"
#include "tests/support/registry_entries.h"

namespace {

namespace fs = std::filesystem;
using memhost::SceneBuilder;
using memhost::StandardMaterial;
using memhost::units_from_utf8;

using Material = qor::SmartMaterial;

// In the order of `TextureKind`.
const struct {
    const char* word;
    int MaterialEntry::*channel;
    void (Material::*set_texture)(std::string);
} kKinds[] = {
    {"diffuse", &MaterialEntry::diffuse_channel, &Material::set_diffuse_texture},
    {"bump", &MaterialEntry::bump_channel, &Material::set_bump_texture},
    {"specular", &MaterialEntry::specular_channel, &Material::set_specular_texture},
    {"opacity", &MaterialEntry::opacity_channel, &Material::set_opacity_texture},
};

std::string text_of(qor::SmartMaterial& material) {
    return emitted_text([&material](qor::qorSceneapi_oo& scene) { material.emit(scene); });
}

// Each kind has its own texture and channel. A map that can't be used changes neither.
TEST(ApplyTexmap, UsesTheFileOfABitmapMapInPlace) {
    const TemporaryFolder folder;
    const std::string wood = folder / "wood_";
    const std::string file = wood + "\xc3\xa9.png";
    memhost::write_png(units_from_utf8(file), memhost::Image(1, 1));
    SceneBuilder scene;
    auto& material = scene.make<StandardMaterial>(L"m");
    const Mesh mesh = memhost::grid_mesh(1, 1, 1).map_positions(3);
    for (int kind = 0; kind < 4; ++kind) {
        Material wanted("m");
        MaterialEntry entry;
        entry.material = std::make_shared<Material>("m");
        const auto expect_applied = [&](Texmap* map, int channel, float v_tiling) {
            apply_texmap(entry, &material, mesh, map, static_cast<TextureKind>(kind));
            EXPECT_EQ(entry.*kKinds[kind].channel, channel);
            EXPECT_EQ(entry.uv_transform.GetRow(1).y, v_tiling);
            EXPECT_EQ(text_of(*entry.material), text_of(wanted));
        };
        expect_applied(nullptr, -1, 1);
        expect_applied(&scene.bitmap(file).channel(2).tiling(1, 5), -1, 1);
        expect_applied(&scene.bitmap(folder / "missing.png").channel(3).tiling(1, 2), 3, 2);
        (wanted.*kKinds[kind].set_texture)(wood + "\xe9.png");
        expect_applied(&scene.bitmap(file).channel(3).tiling(1, 4), 3, 4);
        // A relative path comes out in full.
        fs::current_path(folder.path());
        expect_applied(&scene.bitmap(fs::u8path(file).filename().u8string()).channel(3), 3, 1);
        fs::current_path(fs::temp_directory_path());
    }
}

// A second export doesn't draw a map again if its file couldn't be written, but does if there was
// no memory for the picture.
TEST(ApplyTexmap, DrawsOtherMapsOnceAndAlwaysNamesTheirFile) {
    const struct {
        const char* material;
        int kind;
        bool has_memory;  // at the first export
        int first_drawn, second_drawn;
    } cases[] = {
        {"Rock", 1, true, 1, 0}, {"A", 0, true, 1, 0}, {"A", 1, true, 1, 0},
        {"A", 2, true, 1, 0},    {"A", 3, true, 1, 0}, {"no/such: \"folder\"", 1, true, 1, 0},
        {"No", 1, false, 0, 1},
    };
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.path() / "textures");
    const std::string resources = folder.path().generic_u8string();
    const RegistryEntries velmora({{"HKEY_LOCAL_MACHINE", "SOFTWARE\\Quoria\\Velmora 11",
                                    "ResourceFolder", "\"" + resources + "\""}});
    for (const auto& one : cases) {
        const auto& kind = kKinds[one.kind];
        Material wanted("m");
        (wanted.*kind.set_texture)(resources + "/textures/" + one.material + "_" + kind.word +
                                   ".png");
        for (const bool is_first : {true, false}) {
            SceneBuilder scene;
            if (is_first && !one.has_memory) {
                scene.host().bitmaps().refuse_bitmaps();
            }
            auto& material = scene.make<StandardMaterial>(std::string(one.material));
            auto& map = scene.make<memhost::ProceduralMap>(memhost::solid({255, 0, 0, 255}));
            MaterialEntry entry;
            entry.material = std::make_shared<qor::SmartMaterial>("m");
            apply_texmap(entry, &material, memhost::grid_mesh(1, 1, 1), &map,
                         static_cast<TextureKind>(one.kind));
            EXPECT_EQ(map.renders(), is_first ? one.first_drawn : one.second_drawn);
            EXPECT_EQ(scene.host().bitmaps().record().alive, 0);
            EXPECT_EQ(entry.*kind.channel, 1);
            EXPECT_EQ(entry.bump_channel, one.kind == 1 ? 1 : -1);
            EXPECT_EQ(text_of(*entry.material), text_of(wanted));
        }
    }
    const auto rock = memhost::read_image(units_from_utf8(folder / "textures/Rock_bump.png"));
    ASSERT_TRUE(rock && rock->width == 1024 && rock->height == 1024);
    EXPECT_TRUE(rock->at(1023, 1023) == (memhost::Pixel{255, 0, 0, 255}));
}

TEST(BakeTexmap, DrawsAMapThatIsReadyAndTellsWhatFailed) {
    using memhost::Pixel;
    const Pixel red = {255, 0, 0, 255};
    const TemporaryFolder folder;
    const struct {
        const char* rule;
        BakeResult result;
        std::optional<Pixel> drawn;  // no file without it
    } cases[] = {{"map-needs-update", BakeResult::kWritten, red},
                 {"map-draw-fails", BakeResult::kWritten, Pixel{}},
                 {"bitmap-write-fails", BakeResult::kNotWritten, {}}};
    for (const auto& one : cases) {
        SceneBuilder scene(one.rule);
        memhost::ProceduralMap map(memhost::solid(red));
        const std::wstring path = units_from_utf8(folder / one.rule);
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(bake_texmap(&map, path + L".png"), one.result);
        }
        EXPECT_EQ(map.renders(), 1);
        EXPECT_EQ(scene.host().bitmaps().record().alive, 0);
        const auto image = memhost::read_image(path + L".png");
        EXPECT_EQ(image.has_value(), one.drawn.has_value());
        EXPECT_TRUE(!image || image->at(0, 0) == *one.drawn) << one.rule;
    }
}

}  // namespace
