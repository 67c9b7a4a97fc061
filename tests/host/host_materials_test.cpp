#include "standins/host/memory/materials.h"

#include <string>

#include <gtest/gtest.h>

#include "standins/host/memory/scene_builder.h"

using namespace memhost;

namespace {

TEST(StandardMaterial, HasTwentySlotsAndAnswersForATimeOrForNow) {
    SceneBuilder scene;
    Texmap& map = scene.make<ProceduralMap>(solid({}));
    auto& material = scene.make<StandardMaterial>("T\xc3\xbcr");
    material.map(kBumpSlot, &map, false).diffuse([](TimeValue t) {
        return Color(static_cast<float>(t), 0, 0);
    });

    StdMat& standard = material;
    Mtl& any = material;
    EXPECT_EQ(std::wstring(any.GetName().data()), L"T\u00fcr");
    EXPECT_EQ(standard.GetDiffuse(5).r, 5);
    scene.time(7);
    EXPECT_EQ(any.GetDiffuse(5, FALSE).r, 7) << "the number is that of a material";

    struct SlotCase {
        int slot;
        const wchar_t* name;
    };
    constexpr SlotCase kSlots[] = {{0, L"Ambient Color"},
                                   {1, L"Diffuse Color"},
                                   {2, L"Specular Color"},
                                   {3, L"Specular Level"},
                                   {6, L"Opacity"},
                                   {8, L"Bump"},
                                   {19, L""}};
    ASSERT_EQ(any.NumSubTexmaps(), 20);
    for (const SlotCase& expected : kSlots) {
        EXPECT_EQ(std::wstring(any.GetSubTexmapSlotName(expected.slot, true).data()),
                  expected.name);
    }
    EXPECT_EQ(any.GetSubTexmap(8), &map);
    EXPECT_FALSE(standard.MapEnabled(8));
    EXPECT_EQ(any.GetSubTexmap(1), nullptr);
}

TEST(MultiMaterial, AnswersForThePlaceThatIsAskedAbout) {
    SceneBuilder scene;
    Mtl& red = scene.make<StandardMaterial>(L"Red").diffuse({1, 0, 0});
    Mtl& multi = scene.make<MultiMaterial>(L"Both", std::vector<Mtl*>{nullptr, &red});
    ASSERT_EQ(multi.NumSubMtls(), 2);
    EXPECT_EQ(multi.GetSubMtl(0), nullptr);
    EXPECT_EQ(multi.GetDiffuse(1).r, 1);
    for (const int number : {0, 2}) {
        EXPECT_EQ(multi.GetDiffuse(number).r, 0) << number;
    }
}

TEST(BlockMaterial, FindsBlocksAndParametersById) {
    SceneBuilder scene;
    Texmap& map = scene.make<ProceduralMap>(solid({}));
    auto& made = scene.make<BlockMaterial>(L"Paint", Class_ID(1, 2));
    made.slot(L"Bump Map", &map, false);
    made.block(4)
        .integer(150, L"on", 1)
        .map(100, L"shader", &map)
        .number(-3, L"amount", 0.5f)
        .local_name(-3, L"Menge")
        .color(7, L"tint", {0, 0, 1});
    made.block(4).integer(9, L"late", 2);

    Mtl& material = made;
    EXPECT_EQ(material.ClassID(), Class_ID(1, 2));
    EXPECT_EQ(material.GetParamBlockByID(3), nullptr);
    IParamBlock2& block = *material.GetParamBlockByID(4);
    ASSERT_EQ(block.NumParams(), 5);
    EXPECT_EQ(block.IndextoID(1), 100);
    const ParamDef& shader = block.GetParamDef(100);
    EXPECT_EQ(std::wstring(shader.int_name), L"shader");
    EXPECT_EQ(shader.type, TYPE_TEXMAP);
    EXPECT_EQ(block.GetTexmap(100, 0, 0), &map);
    EXPECT_EQ(block.GetInt(150, 0, 0), 1);
    EXPECT_EQ(block.GetFloat(-3, 0, 0), 0.5f);
    EXPECT_EQ(block.GetColor(7).b, 1);
    EXPECT_EQ(std::wstring(block.GetLocalName(-3, -1, true).data()), L"Menge");
    EXPECT_EQ(std::wstring(block.GetLocalName(100).data()), L"shader");

    // What isn't there, or is of another type, reads as nothing.
    EXPECT_EQ(block.GetTexmap(150), nullptr);
    EXPECT_EQ(block.GetInt(77), 0);
    EXPECT_NE(block.GetParameterType(77), TYPE_TEXMAP);
    EXPECT_FALSE(material.SubTexmapOn(0));
}

}  // namespace
