#include <filesystem>
#include <fstream>
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
        << R"(],"images":[)" << sources << R"(],"extensionsUsed":["KHR_texture_transform"],
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

}  // namespace
