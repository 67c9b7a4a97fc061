#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "standins/host/memory/image_file.h"
#include "tests/import/imported_model.h"
#include "tests/support/temporary_folder.h"

using namespace memhost;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

namespace fs = std::filesystem;

// Two pixels each: red, and green with an alpha of 64; blue and green.
const std::string kRed =
    "data:image/png;base64,iVBORw0KGgoAAAANSUhEUgAAAAIAAAABCAYAAAD0In+KAAAAD0lEQVR4nGP4z8DwHwgdABA5"
    "Az6tfOGaAAAAAElFTkSuQmCC";
const std::string kBlue =
    "data:image/png;base64,iVBORw0KGgoAAAANSUhEUgAAAAIAAAABCAYAAAD0In+KAAAAD0lEQVR4nGNgYPj/nwEIAQ76"
    "A/2ILbfFAAAAAElFTkSuQmCC";

// A file with a node N0, N1, ... for each material, which shows it on a triangle with coordinates.
std::string written_gltf(const TemporaryFolder& folder, const std::string& name,
                         const std::vector<std::string>& materials,
                         const std::vector<std::string>& images = {}) {
    std::string nodes, meshes, list, textures, sources;
    for (std::size_t i = 0; i < materials.size(); ++i) {
        const std::string comma = i == 0 ? "" : ",", number = std::to_string(i);
        nodes += comma + R"({"name":"N)" + number + R"(","mesh":)" + number + "}";
        meshes += comma +
                  R"({"primitives":[{"attributes":{"POSITION":0,"TEXCOORD_0":1},"material":)" +
                  number + "}]}";
        list += comma + materials[i];
    }
    for (std::size_t i = 0; i < images.size(); ++i) {
        textures += (i == 0 ? "" : ",") + (R"({"source":)" + std::to_string(i)) + "}";
        sources += (i == 0 ? "" : ",") + (R"({"name":"../../up","uri":")" + images[i]) + "\"}";
    }
    std::ofstream(fs::u8path(folder / name), std::ios::binary)
        << R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[)"
        << (materials.size() > 1 ? "0,1" : "0") << R"(]}],"nodes":[)" << nodes << R"(],"meshes":[)"
        << meshes << R"(],"materials":[)" << list << R"(],"textures":[)" << textures
        << R"(],"images":[)" << sources << R"(],"extensionsUsed":["KHR_texture_transform",
        "KHR_materials_pbrSpecularGlossiness"],
        "accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3"},
        {"bufferView":1,"componentType":5126,"count":3,"type":"VEC2"}],"bufferViews":[
        {"buffer":0,"byteLength":36},{"buffer":0,"byteOffset":36,"byteLength":24}],"buffers":[{
        "byteLength":60,"uri":"data:application/octet-stream;base64,AAAAAAAAAAAAAAAAAACAPwAAAAAAAAAAA)"
        << R"(AAAAAAAgD8AAAAAAAAAAAAAAAAAAIA/AAAAAAAAAAAAAIA/"}]})";
    return folder / name;
}

StandardMaterial& material_of(ImportedModel& scene, const std::string& node) {
    return dynamic_cast<StandardMaterial&>(*scene.find(node).GetMtl());
}

BitmapTex& bitmap_of(ImportedModel& scene, const std::string& node, int slot = kDiffuseSlot) {
    return dynamic_cast<BitmapTex&>(*material_of(scene, node).GetSubTexmap(slot));
}

std::size_t files_in(const std::string& folder) {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(fs::u8path(folder)), fs::directory_iterator()));
}

const std::string kTextured = R"({"name":"M","pbrMetallicRoughness":{"baseColorTexture":{"index":)";

TEST(ModelMaterial, WritesEmbeddedTexturesOnceUnderPlainNames) {
    const TemporaryFolder folder, textures;
    vsqexport::ImportOptions options;
    options.texture_folder = textures / "";
    const std::string model = written_gltf(folder, "m\xc3\xb6\xe6\xa4\x85 1.gltf",
                                           {kTextured + "0}}}", kTextured + "1}}}"}, {kRed, kBlue});
    ImportedModel first(model, options);
    EXPECT_THAT(first.warnings, ElementsAre());
    ImportedModel again(model, options);
    EXPECT_EQ(files_in(textures / ""), 2u);
    const Pixel firsts[] = {{255, 0, 0, 255}, {0, 0, 255, 255}};
    for (int i = 0; i < 2; ++i) {
        const std::string node = "N" + std::to_string(i);
        const std::wstring file = bitmap_of(first, node).GetMapName();
        EXPECT_EQ(bitmap_of(again, node).GetMapName(), file);
        EXPECT_THAT(fs::u8path(utf8_from_units(file)).filename().u8string(),
                    testing::MatchesRegex("m______*1-[0-9a-f]+\\.png"));
        const auto image = read_image(file);
        ASSERT_TRUE(image);
        EXPECT_EQ(image->at(0, 0), firsts[i]);
        EXPECT_EQ(image->width, 2);
    }
    EXPECT_EQ(utf8_from_units(material_of(first, "N0").GetName().data()), "M");
    EXPECT_EQ(utf8_from_units(material_of(first, "N1").GetName().data()), "M 2");
}

// The extension scales, rotates counterclockwise around the origin, which is at the upper left, and
// moves.
TEST(ModelMaterial, PlacesTexturesAsTheFileSays) {
    const TemporaryFolder folder, textures;
    vsqexport::ImportOptions options;
    options.texture_folder = textures / "";
    const struct {
        const char* transform;
        Point3 from, to;  // coordinates in the host, with v upwards
    } cases[] = {
        {R"("offset":[0.1,0.2],"scale":[2,3])", {0.25f, 0.5f, 0}, {0.6f, -0.7f, 0}},
        {R"("offset":[0.1,0.2],"rotation":1.57079633,"scale":[2,3])",
         {0.25f, 0.5f, 0},
         {1.6f, 1.3f, 0}},
        {R"("offset":[0.1,0.2],"rotation":0.52359878,"scale":[2,1])",
         {0.25f, 0.75f, 0},
         {0.6580127f, 0.8334936f, 0}},
    };
    for (const auto& one : cases) {
        ImportedModel scene(
            written_gltf(folder, "m.gltf",
                         {kTextured + R"(0,"extensions":{"KHR_texture_transform":{)" +
                          one.transform + "}}}}}"},
                         {kRed}),
            options);
        Matrix3 map_from_mesh;
        bitmap_of(scene, "N0").GetUVTransform(map_from_mesh);
        EXPECT_LT((one.from * map_from_mesh - one.to).Length(), 1e-5f) << one.transform;
    }
}

// A triangle with a material from a library file, without coordinates.
std::string written_obj(const TemporaryFolder& folder, const std::string& material) {
    std::ofstream(fs::u8path(folder / "m.mtl")) << "newmtl M\n" << material;
    std::ofstream(fs::u8path(folder / "m.obj"))
        << "mtllib m.mtl\no N0\nusemtl M\nv 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n";
    return folder / "m.obj";
}

std::string pbr(const std::string& values, const std::string& others = "") {
    return R"({"name":"M","pbrMetallicRoughness":{)" + values + "}" + others + "}";
}

std::optional<Image> image_in(StandardMaterial& material, int slot) {
    auto* const map = dynamic_cast<BitmapTex*>(material.GetSubTexmap(slot));
    return map ? read_image(map->GetMapName()) : std::nullopt;
}

TEST(ModelMaterial, TakesWhatAStandardMaterialHolds) {
    SKIP_WITHOUT_MODELS();
    const TemporaryFolder folder, textures;
    vsqexport::ImportOptions options;
    options.texture_folder = textures / "";
    const auto gltf = [&](const std::string& material) {
        return written_gltf(folder, "m.gltf", {material}, {kRed, kBlue});
    };
    const std::string base = R"("baseColorFactor":[0.8,0.4,0.2,0.5])";
    const std::string gloss = R"({"extensions":{"KHR_materials_pbrSpecularGlossiness":{
        "diffuseFactor":[0.1,0.2,0.3,1],"specularFactor":[0.4,0.5,0.6],"glossinessFactor":0.7}}})";
    const std::string obj = "Kd .1 .2 .3\nKs .4 .5 .6\nNs 98\n";
    const struct {
        std::string what, node;
        std::function<std::string()> model;
        Color diffuse, specular;
        float level;
        int opacity;  // grey of the opacity map; -1 without one
        std::string loss;
    } cases[] = {
        {"half metal",
         "N0",
         [&] { return gltf(pbr(base + R"(,"metallicFactor":0.5,"roughnessFactor":0.25)")); },
         {0.5f, 0.25f, 0.125f},
         {0.42f, 0.22f, 0.12f},
         0.75f,
         -1,
         ""},
        {"rough metal",
         "N0",
         [&] { return gltf(pbr(base, R"(,"alphaMode":"BLEND")")); },
         {0.8f, 0.4f, 0.2f},
         {0.8f, 0.4f, 0.2f},
         0,
         128,
         ""},
        {"cut off",
         "N0",
         [&] { return gltf(pbr(base, R"(,"alphaMode":"MASK","alphaCutoff":0.6)")); },
         {0.8f, 0.4f, 0.2f},
         {0.8f, 0.4f, 0.2f},
         0,
         0,
         ""},
        {"metal by texture",
         "N0",  // on average 0.5 in its green and 0.5 in its blue
         [&] { return gltf(pbr(base + R"(,"metallicRoughnessTexture":{"index":1})")); },
         {0.6f, 0.3f, 0.15f},
         {0.42f, 0.22f, 0.12f},
         0.5f,
         -1,
         "only the mean is used"},
        {"gloss",
         "N0",
         [&] { return gltf(gloss); },
         {0.1f, 0.2f, 0.3f},
         {0.4f, 0.5f, 0.6f},
         0.7f,
         -1,
         ""},
        {"exponent",
         "N0",
         [&] { return written_obj(folder, obj + "illum 2\nd 0.25\n"); },
         {0.1f, 0.2f, 0.3f},
         {0.4f, 0.5f, 0.6f},
         0.858579f,
         64,
         ""},
        {"no highlight",
         "N0",
         [&] { return written_obj(folder, obj + "illum 1\n"); },
         {0.1f, 0.2f, 0.3f},
         {0.4f, 0.5f, 0.6f},
         0,
         -1,
         ""},
        {"invisible",
         "N0",
         [&] { return written_obj(folder, obj + "illum 2\nd 0\n"); },
         {0.1f, 0.2f, 0.3f},
         {0.4f, 0.5f, 0.6f},
         0.858579f,
         -1,
         "it is opaque"},
        {"the host's metal",
         "Box001",
         [&] { return kModels + "FBX/maxPbrMaterial_metalRough.fbx"; },
         {0, 0.875f, 0.875f},
         {0.03f, 0.28f, 0.28f},
         0.5f,
         -1,
         "normal map isn't used"},
        {"the host's gloss",
         "Box001",
         [&] { return kModels + "FBX/maxPbrMaterial_specGloss.fbx"; },
         {0, 1, 1},
         {1, 1, 0},
         0.33f,
         -1,
         "baked light or occlusion"},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.what);
        ImportedModel scene(one.model(), options);
        StandardMaterial& material = material_of(scene, one.node);
        const auto expect_color = [](const Color& color, const Color& expected) {
            EXPECT_NEAR(color.r, expected.r, 1e-6);
            EXPECT_NEAR(color.g, expected.g, 1e-6);
            EXPECT_NEAR(color.b, expected.b, 1e-6);
        };
        expect_color(material.GetDiffuse(0), one.diffuse);
        expect_color(material.GetSpecular(0), one.specular);
        EXPECT_NEAR(material.GetShininess(0), one.level, 1e-6);
        const auto opacity = image_in(material, kOpacitySlot);
        EXPECT_EQ(opacity ? opacity->at(0, 0).red : -1, one.opacity);
        const Mesh& mesh = scene.object<TriObject>(one.node).GetMesh();
        EXPECT_TRUE(!opacity || mesh.mapSupport(1));
        EXPECT_EQ(
            testing::PrintToString(scene.warnings).find("import-material") == std::string::npos,
            one.loss.empty());
        EXPECT_THAT(testing::PrintToString(scene.warnings), HasSubstr(one.loss));
    }
}

TEST(ModelMaterial, DrawsPicturesForAlphaAndFactors) {
    const TemporaryFolder folder, textures;
    vsqexport::ImportOptions options;
    options.texture_folder = textures / "";
    const std::string half = R"(,"baseColorFactor":[0.5,1,1,0.5],"metallicFactor":0)";
    const struct {
        std::string alpha;
        std::vector<int> greys;
    } cases[] = {
        {R"("BLEND")", {128, 32}},  // 255 and 64, times a half
        {R"("MASK","alphaCutoff":0.1)", {255, 255}},
        {R"("MASK")", {255, 0}},
        {R"("OPAQUE")", {}},
    };
    for (const auto& one : cases) {
        ImportedModel scene(
            written_gltf(folder, "m.gltf",
                         {pbr(R"("baseColorTexture":{"index":0})" + half,
                              R"(,"normalTexture":{"index":0},"alphaMode":)" + one.alpha)},
                         {kRed}),
            options);
        StandardMaterial& material = material_of(scene, "N0");
        const auto opacity = image_in(material, kOpacitySlot);
        const auto diffuse = image_in(material, kDiffuseSlot);
        ASSERT_TRUE(diffuse);
        EXPECT_EQ(diffuse->at(0, 0).red, 188);  // half the light
        EXPECT_EQ(diffuse->at(1, 0).green, 255);
        std::vector<int> greys;
        for (int i = 0; opacity && i < 2; ++i) {
            greys.push_back(opacity->at(i, 0).green);
        }
        EXPECT_EQ(greys, one.greys) << one.alpha;
        EXPECT_EQ(material.GetSubTexmap(kBumpSlot), nullptr);
    }
}

TEST(ModelMaterial, TellsHeightsFromNormals) {
    const TemporaryFolder folder;
    for (const bool has_normals : {false, true}) {
        Image image(1, 1);
        image.pixels[0] = {128, 128, static_cast<std::uint8_t>(has_normals ? 255 : 128), 255};
        ASSERT_TRUE(write_png(units_from_utf8(folder / "b.png"), image));
        ImportedModel scene(written_obj(folder, "map_Bump b.png\n"));
        EXPECT_EQ(material_of(scene, "N0").GetSubTexmap(kBumpSlot) == nullptr, has_normals);
        EXPECT_EQ(scene.warnings.size(), has_normals ? 1u : 0u);
    }
}

}  // namespace
