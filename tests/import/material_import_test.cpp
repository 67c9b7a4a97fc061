#include "standins/host/import/material_import.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <assimp/material.h>
#include <gmock/gmock.h>

#include "standins/host/memory/host_text.h"
#include "standins/host/memory/image_file.h"
#include "tests/support/temporary_folder.h"

using namespace memhost;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;

namespace {

constexpr Pixel kRed = {255, 0, 0, 255};
constexpr Pixel kGreen = {0, 255, 0, 255};

// A model of one material.
struct OneMaterial {
    aiScene model;
    aiMaterial* material = new aiMaterial;

    OneMaterial() {
        model.mNumMaterials = 1;
        model.mMaterials = new aiMaterial* [1] { material };
    }

    void texture(aiTextureType type, const char* path) {
        const aiString text(path);
        material->AddProperty(&text, AI_MATKEY_TEXTURE(type, 0));
    }
    void embed(std::vector<aiTexture*> textures) {
        model.mNumTextures = static_cast<unsigned>(textures.size());
        model.mTextures = new aiTexture*[textures.size()];
        std::copy(textures.begin(), textures.end(), model.mTextures);
    }
};

aiTexture* embedded(unsigned width, unsigned height, const std::string& bytes) {
    auto* texture = new aiTexture;
    texture->mWidth = width;
    texture->mHeight = height;
    texture->pcData = new aiTexel[bytes.size() / sizeof(aiTexel) + 1];
    std::copy(bytes.begin(), bytes.end(), reinterpret_cast<char*>(texture->pcData));
    return texture;
}

TEST(ModelMaterials, TakeColorsAndMapsWithTheirPlace) {
    const TemporaryFolder folder;
    write_png(units_from_utf8(folder / "a.png"), Image(2, 3));
    OneMaterial source;
    const aiString name("T\xc3\xbcr");
    const aiColor3D diffuse(0.25f, 0.5f, 0.75f);
    const aiColor3D specular(1, 0.5f, 0);
    const float strength = 0.5f;
    const int second_set = 1;
    aiUVTransform placed;
    placed.mScaling = aiVector2D(2, 4);
    placed.mTranslation = aiVector2D(0.5f, 0.25f);
    aiUVTransform turned;
    turned.mRotation = AI_MATH_HALF_PI_F;
    source.material->AddProperty(&name, AI_MATKEY_NAME);
    source.material->AddProperty(&diffuse, 1, AI_MATKEY_COLOR_DIFFUSE);
    source.material->AddProperty(&specular, 1, AI_MATKEY_COLOR_SPECULAR);
    source.material->AddProperty(&strength, 1, AI_MATKEY_SHININESS_STRENGTH);
    source.texture(aiTextureType_BASE_COLOR, "A.png");
    source.material->AddProperty(&second_set, 1, AI_MATKEY_UVWSRC(aiTextureType_BASE_COLOR, 0));
    source.material->AddProperty(&placed, 1, AI_MATKEY_UVTRANSFORM(aiTextureType_BASE_COLOR, 0));
    source.texture(aiTextureType_HEIGHT, "missing.png");
    source.material->AddProperty(&turned, 1, AI_MATKEY_UVTRANSFORM(aiTextureType_HEIGHT, 0));
    source.texture(aiTextureType_NORMALS, "a.png");

    SceneBuilder scene;
    std::vector<std::string> warnings;
    ModelMaterials materials(source.model, folder.path(), scene, warnings);
    EXPECT_EQ(materials.get(1), nullptr);
    auto* material = dynamic_cast<StandardMaterial*>(materials.get(0));
    ASSERT_NE(material, nullptr);
    EXPECT_EQ(materials.get(0), material) << "made once";
    EXPECT_THAT(warnings, ElementsAre(HasSubstr("missing.png")));

    EXPECT_EQ(std::wstring(material->GetName().data()), L"T\u00fcr");
    EXPECT_EQ(material->GetDiffuse(0).b, 0.75f);
    EXPECT_EQ(material->GetSpecular(0).r, 1);
    EXPECT_EQ(material->GetShininess(0), 0.5f);
    EXPECT_EQ(material->GetSubTexmap(kOpacitySlot), nullptr);

    auto* map = dynamic_cast<BitmapMap*>(material->GetSubTexmap(kDiffuseSlot));
    ASSERT_NE(map, nullptr);
    EXPECT_THAT(utf8_from_units(map->GetMapName()), EndsWith("a.png"));
    EXPECT_NE(map->GetBitmap(0), nullptr);
    EXPECT_EQ(map->GetMapChannel(), 2);
    Matrix3 matrix;
    map->GetUVTransform(matrix);
    EXPECT_EQ((Point3(1, 1, 0) * matrix).x, 2.5f);
    EXPECT_EQ((Point3(1, 1, 0) * matrix).y, 4.25f);

    // A height comes before normals; a quarter turn around the middle moves the corner.
    auto* bump = dynamic_cast<BitmapMap*>(material->GetSubTexmap(kBumpSlot));
    ASSERT_NE(bump, nullptr);
    EXPECT_EQ(bump->GetBitmap(0), nullptr);
    bump->GetUVTransform(matrix);
    EXPECT_NEAR((Point3(0, 0, 0) * matrix).x, 1, 1e-6);
    EXPECT_NEAR((Point3(0, 0, 0) * matrix).y, 0, 1e-6);
}

TEST(ModelMaterials, DrawEmbeddedTexturesPixelByPixel) {
    const TemporaryFolder folder;
    Image picture(2, 1);
    picture.at(0, 0) = kRed;
    picture.at(1, 0) = kGreen;
    write_png(units_from_utf8(folder / "a.png"), picture);
    const std::string file = file_contents(folder / "a.png");

    OneMaterial source;
    const std::string blue_green_red_alpha("\0\0\xff\xff\0\xff\0\xff", 8);
    source.embed({embedded(static_cast<unsigned>(file.size()), 0, file),
                  embedded(2, 1, blue_green_red_alpha), embedded(5, 0, "prose")});
    source.texture(aiTextureType_DIFFUSE, "*0");
    source.texture(aiTextureType_SPECULAR, "*1");
    source.texture(aiTextureType_OPACITY, "*2");
    source.texture(aiTextureType_HEIGHT, "*7");

    SceneBuilder scene;
    std::vector<std::string> warnings;
    ModelMaterials materials(source.model, folder.path(), scene, warnings);
    Mtl* material = materials.get(0);
    EXPECT_THAT(warnings, ElementsAre(HasSubstr("*2"), HasSubstr("no embedded texture 7")));
    EXPECT_EQ(std::wstring(material->GetName().data()), L"Material 1");
    EXPECT_EQ(material->GetSubTexmap(kOpacitySlot), nullptr);
    EXPECT_EQ(material->GetSubTexmap(kBumpSlot), nullptr);
    for (const int slot : {kDiffuseSlot, kSpecularColorSlot}) {
        Texmap* map = material->GetSubTexmap(slot);
        ASSERT_NE(dynamic_cast<ProceduralMap*>(map), nullptr) << slot;
        MemoryBitmap bitmap(&scene.host().bitmaps(), 4, 2);
        map->RenderBitmap(0, &bitmap, 1.0f, FALSE);
        EXPECT_EQ(bitmap.image().at(1, 1), kRed) << slot;
        EXPECT_EQ(bitmap.image().at(2, 0), kGreen) << slot;
    }
}

}  // namespace
