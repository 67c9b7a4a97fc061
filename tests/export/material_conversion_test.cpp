#include "plugins/3dsmax/export/material_conversion.h"

#include <gtest/gtest.h>

#include "platform/wide_text.h"
#include "plugins/3dsmax/export/material_entry.h"
#include "standins/host/memory/image_file.h"
#include "standins/host/memory/scene_builder.h"
#include "tests/support/emitted_calls.h"

namespace {

using memhost::BlockMaterial;

class MaterialConversion : public testing::Test {
protected:
    using SetTexture = void (qor::SmartMaterial::*)(std::string);
    static constexpr SetTexture kDiffuse = &qor::SmartMaterial::set_diffuse_texture;
    static constexpr SetTexture kSpecular = &qor::SmartMaterial::set_specular_texture;
    static constexpr SetTexture kBump = &qor::SmartMaterial::set_bump_texture;
    static constexpr SetTexture kOpacity = &qor::SmartMaterial::set_opacity_texture;

    // A bitmap map of a new image file with that name.
    Texmap* image(const std::string& name) {
        memhost::write_png((folder_.path() / name).wstring() + L".png", memhost::Image(1, 1));
        return &scene_.bitmap(path(name));
    }

    void want_textures(const char* diffuse, const char* specular, const char* bump) {
        wanted_.set_diffuse_texture(path(diffuse));
        wanted_.set_specular_texture(path(specular));
        wanted_.set_bump_texture(path(bump));
    }

    // Expects that `material`, converted at tick 160, is written like `wanted_`.
    void expect_wanted(Mtl& material) {
        MaterialEntry entry;
        entry.time = 160;
        convert_material(entry, memhost::grid_mesh(1, 1, 1).mesh(), &material);
        EXPECT_EQ(emitted_text([&](auto& scene) { entry.material->emit(scene); }),
                  emitted_text([&](auto& scene) { wanted_.emit(scene); }));
    }

    // Expects that the slot's picture, and no other, is written as one of that kind.
    void expect_slot(Mtl& material, const std::string& name, SetTexture set_texture) {
        SCOPED_TRACE(name);
        wanted_ = qor::SmartMaterial("MA");
        wanted_.set_specular_color(0, 0, 0);
        wanted_.set_diffuse_color(0, 0, 0);
        (wanted_.*set_texture)(path("map"));
        expect_wanted(material);
    }

    memhost::SceneBuilder scene_;
    qor::SmartMaterial wanted_{"M\x41"};

private:
    std::string path(const std::string& name) const {
        return name.empty() ? "" : folder_ / (name + ".png");
    }

    TemporaryFolder folder_;
};

TEST_F(MaterialConversion, TakesTheEnabledSlotsOfAStandardMaterial) {
    auto& material = scene_.make<memhost::StandardMaterial>(L"M\u0141");
    material.diffuse([](TimeValue t) { return Color(t == 160 ? 0.5f : 0.0f, 2, -1); });
    material.specular({0.5f, 4, 0.1f}).shininess(0.5f);
    material.map(memhost::kAmbientSlot, image("ambient"));
    material.map(memhost::kDiffuseSlot, image("diffuse"));
    material.map(memhost::kSpecularColorSlot, image("color"));
    material.map(memhost::kSpecularLevelSlot, image("level"));
    material.map(memhost::kBumpSlot, image("bump"), false);
    wanted_.set_diffuse_color(0.5f, 1, 0);
    wanted_.set_specular_color(0.25f, 1, 0.05f);
    want_textures("diffuse", "level", "");
    expect_wanted(material);
}

// Each slot in a material of its own, so that none can stand in for another.
TEST_F(MaterialConversion, KnowsEachSlotByItsName) {
    Texmap* const map = image("map");
    const std::pair<int, SetTexture> standard_slots[] = {
        {memhost::kDiffuseSlot, kDiffuse},
        {memhost::kOpacitySlot, kOpacity},
        {memhost::kBumpSlot, kBump},
        {memhost::kSpecularColorSlot, kSpecular},
        {memhost::kSpecularLevelSlot, kSpecular},
    };
    for (const auto& [slot, set_texture] : standard_slots) {
        auto& material = scene_.make<memhost::StandardMaterial>(L"MA").map(slot, map);
        expect_slot(material.diffuse(Color()), "standard " + std::to_string(slot), set_texture);
    }
    const std::pair<std::string, SetTexture> generic_slots[] = {{"Diffuse Color", kDiffuse},
                                                                {"Opacity", kOpacity},
                                                                {"Bump", kBump},
                                                                {"Specular", kSpecular}};
    for (const auto& [name, set_texture] : generic_slots) {
        for (const std::string& slot : {name, name + " Map"}) {
            auto& material = scene_.make<BlockMaterial>(L"MA", Class_ID(1, 2));
            expect_slot(material.slot(platform::wide_from_utf8(slot), map), slot, set_texture);
        }
    }
}

// Slots and parameter blocks after the twentieth are ignored.
TEST_F(MaterialConversion, TakesTheCommonPropertiesOfOtherClasses) {
    auto& material = scene_.make<BlockMaterial>(L"MA", Class_ID(1, 2));
    material.diffuse({0.1f, 0.2f, 0.3f}).specular({0.4f, 0.5f, 4}).shininess(0.5f);
    material.block(0).map(0, L"bump_map", image("first")).number(1, L"bump_map_amt", 1.5f);
    wanted_.set_diffuse_color(0.1f, 0.2f, 0.3f);
    wanted_.set_specular_color(0.2f, 0.25f, 1);
    wanted_.set_bump_height(1.5f);
    want_textures("", "", "first");
    expect_wanted(material);
    material.block(19).number(7, L"bump_map_amt", 2.5f).map(3, L"bump_map", image("block"));
    material.block(20).number(0, L"bump_map_amt", 9).map(1, L"bump_map", image("far"));
    material.slot(L"Specular Color", image("other")).slot(L"Opacity", image("off"), false);
    wanted_.set_bump_height(2.5f);
    want_textures("", "", "block");
    expect_wanted(material);

    material.slot(L"Bump", image("slot")).slot(L"Specular Map", image("specular"));
    material.slot(L"Diffuse Color Map", image("diffuse"));
    while (material.NumSubTexmaps() < 20) {
        material.slot(L"", nullptr);
    }
    material.slot(L"Bump", image("far"));
    want_textures("diffuse", "specular", "slot");
    expect_wanted(material);
}

TEST_F(MaterialConversion, TakesOneColourAndTheEnabledMapsOfItsBlocks) {
    auto& material = scene_.make<BlockMaterial>(L"MA", Class_ID(0x37BF3F2F, 0x7034695C));
    expect_wanted(material);

    material.block(1).color(1, L"color", {0.25f, 0.5f, 2});
    material.block(4).map(100, L"", image("diffuse")).integer(150, L"", 1);
    material.block(4).map(103, L"", image("bump")).integer(153, L"", 0);
    wanted_.set_diffuse_color(0.25f, 0.5f, 1);
    wanted_.set_specular_color(0.25f, 0.5f, 1);
    want_textures("diffuse", "", "");
    expect_wanted(material);

    auto& bumpy = scene_.make<BlockMaterial>(L"MA", Class_ID(0x37BF3F2F, 0x7034695C));
    bumpy.block(4).map(103, L"", image("bump")).integer(153, L"", 1);
    wanted_ = qor::SmartMaterial("MA");
    want_textures("", "", "bump");
    expect_wanted(bumpy);
}

TEST_F(MaterialConversion, TakesTheMapsOfABlockByTheirLocalNames) {
    auto& material = scene_.make<BlockMaterial>(L"MA", Class_ID(0x3F2C5FAA, 0x750008BC));
    expect_wanted(material);

    auto& block = material.block(0);
    block.map(0, L"d", image("diffuse")).local_name(0, L"texmap_diffuse_color");
    block.map(1, L"texmap_diffuse_color", image("other")).local_name(1, L"d");
    block.map(2, L"texmap_specular_glossiness", image("specular"));
    block.map(3, L"texmap_bump", image("bump")).number(4, L"texmap_bump", 1);
    block.number(5, L"amount", 30).number(9, L"behind a gap", 1);
    wanted_.set_bump_height(1.5f);
    want_textures("diffuse", "specular", "bump");
    expect_wanted(material);
}

}  // namespace
