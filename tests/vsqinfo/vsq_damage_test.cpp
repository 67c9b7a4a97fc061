#include <gtest/gtest.h>

#include <string>

#include "tests/vsqinfo/scene_text.h"
#include "tools/vsqinfo/group_tree.h"
#include "tools/vsqinfo/vsq_reader.h"

namespace {

using namespace scene_text;

// A file with a bit of everything that an export writes.
std::string rich_file() {
    const std::string matrix = "1 0 0 0 0 1 0 0 0 0 1 0 2.5 -3e-07 inf 1";
    const std::string camera =
        "\ncamera \"Camera\" {\nprojection \"perspective\"\nfov 45\n"
        "reflection map \"qor_envmap\" {\n\"texture\" \"startup.hdr\",\n\"format\" 3,\n}\n"
        "flags 16\nposition 0 0 0\nup 0 1 0\nclipping 1 100\n"
        "animation \"fbx_animation_2\" \"3ds_animation\" {\n\"duration\" 0.066,\n" +
        binary("timestamps", 'i', {0, 33}) + "\"matrices\" [ " + matrix + " ,\n" + matrix +
        " \n] ,\n\"interpolate\" on,\n\"folder\" \"\",\n}\n}\n";
    const std::string numbered_material =
        "\nmaterial \"wood\" {\n#define shader 1 texture2_rgb {\n\"texture\" xX633ae92e706e67,\n}\n"
        "#define shader 2 qor_diffuse {\n\"diffuse\" ! 1,\n\"diffuse\" 0.5 0.5 0.5,\n}\n"
        "#define shader 3 qor_composite {\n\"shaders\" [\n" +
        body('i', {2, 1}) + " ],\n}\nsurface 3\nflags 4096\n}\n";
    const std::string nested_material =
        "\nmaterial \"curve\" {\nsurface \"qor_diffuse\" {\n\"diffuse\" ! \"vertex_color\" {\n" +
        binary("table", 'r', {0, 0x7d0a0a7d}) + "},\n}\nflags 4096\n}\n";

    return kHeader +
           "#print \"Velmora SceneApi oo 11.2.0  (built Fri Feb 11 13:51:42 2022)\"\n"
           "version 9\n\nload \"qorrtopt.so\" {\n\"import_mode\" on,\n\"meter_scale\" 100,\n}\n"
           "\ngroup \"object\" {\nflags 0\n" +
           camera + "\ngroup \"Box001\" {\n\ngroup xXe9 {\nobject \"Box001\" {\nflags 0\n" +
           "geometry \"triangles\" {\n" + binary("vertices", 'c', {0, 0, 0, 1, 0, 0, 0, 1, 0}) +
           binary("triangles", 'i', {0, 1, 2}) + binary("uv_tex", 'f', {0, 0, 1, 0, 0, 1}) + "}\n" +
           numbered_material + "}\n#error \"No triangles defined\"\ntransform " + matrix +
           "\n}\nobject \"hair\" {\ngeometry \"qor_curves\" {\n\"radius\" 1,\n" +
           binary("p", 'c', std::vector<std::uint32_t>(12, 0x3f800000)) +
           binary("nvertices", 'i', {4}) + "}\n" + nested_material + "}\nset transform " + matrix +
           "\n}\n}\n";
}

TEST(VsqReader, SummarisesAFile) {
    std::ostringstream tree;
    vsqinfo::GroupTree listener(tree);
    EXPECT_EQ(summary_text(read(rich_file(), &listener)), R"(size          1547 bytes
format        version 9, id 1
written by    Velmora SceneApi oo 11.2.0  (built Fri Feb 11 13:51:42 2022)
module        "qorrtopt.so"
              import_mode on
              meter_scale 100
root group    "object", flags 0
groups        2
objects       2
triangles     1  (3 vertices)
curves        1  (4 points)
materials     2  (2 blocks, 6 shaders)
textures      1  (1 environments)
lights        0
cameras       1
animations    1  (2 keys)
matrices      2
not finite    4
errors        1
              No triangles defined
)");
    EXPECT_EQ(tree.str(), R"(group "object"
  camera "Camera"
  group "Box001"
    group "\xe9"
      object "Box001"
      transform 1 0 0 0, 0 1 0 0, 0 0 1 0, 2.5 -3e-07 inf 1
    object "hair"
    set transform 1 0 0 0, 0 1 0 0, 0 0 1 0, 2.5 -3e-07 inf 1
)");
}

TEST(DamagedFile, IsRefusedIfCutShortAtAnyByte) {
    const std::string file = rich_file();
    ASSERT_FALSE(refusal(file));
    for (std::size_t length = 0; length < file.size(); ++length) {
        const auto refused = refusal(file.substr(0, length));
        ASSERT_TRUE(refused) << "cut to " << length << " bytes";
        EXPECT_LE(refused->offset(), length);
    }
}

// A write that failed half-way can leave a gap, or two files run together.
TEST(DamagedFile, IsRefusedWithAHoleInIt) {
    const std::string file = rich_file();
    const std::size_t root = file.find("\ngroup \"object\"");
    const std::size_t array = file.find("\"vertices\"") + 20;
    for (std::size_t hole = 1; hole < 64; ++hole) {
        EXPECT_TRUE(refusal(file.substr(0, array) + file.substr(array + hole))) << hole;
    }
    EXPECT_TRUE(refusal(file.substr(0, root + 40) + file));
}

}  // namespace
