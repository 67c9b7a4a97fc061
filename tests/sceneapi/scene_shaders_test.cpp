#include <gtest/gtest.h>

#include "importers/sceneapi/dev/parameter_codes.h"
#include "tests/support/written_scene.h"

namespace {

using Api = qorScene_api_file;
using namespace std::string_literals;

void put_one(Api& a) {
    const std::int32_t one = 1;
    a.set_parameter("n", parameter_code::kInt, &one);
}

TEST(SceneShaders, NamedAndNumberedShadersAreWrittenAtOnce) {
    EXPECT_EQ(written_by([](Api& a) {
                  a.begin_material("m", true);
                  EXPECT_TRUE(a.begin_shader("s", "qor_diffuse"));
                  put_one(a), a.end_shader();
                  EXPECT_TRUE(a.begin_shader_id("qor_bumpmap", 3));
                  put_one(a), a.end_shader();
                  a.assign_shader_id(shader_kind::kSurface, 3);
                  a.end_material();
              }),
              "material \"m\" {\n"
              "#define shader \"s\" \"qor_diffuse\" {\n\"n\" 1,\n}\n"
              "#define shader 3 qor_bumpmap {\n\"n\" 1,\n}\n"
              "surface 3\n"
              "}\n");
}

TEST(SceneShaders, AnonymousShadersAreWrittenWhereTheyAreUsed) {
    EXPECT_EQ(written_by([](Api& a) {
                  a.begin_material("m", true);
                  a.begin_shader(nullptr, "qor_diffuse");
                  a.push_shader();
                  a.begin_shader(nullptr, "vertex_color"), put_one(a), a.end_shader();
                  const qorShaderHandle inner = a.current_shader();
                  a.pop_shader();
                  put_one(a);
                  a.set_parameter_shader("diffuse", inner);
                  a.end_shader();
                  const qorShaderHandle outer = a.current_shader();
                  a.assign_shader(shader_kind::kSurface, outer);
                  // A handle is valid as long as the writer exists.
                  a.assign_shader(shader_kind::kShadow, inner);
                  a.end_material();
              }),
              "material \"m\" {\n"
              "surface \"qor_diffuse\" {\n\"n\" 1,\n"
              "\"diffuse\" ! \"vertex_color\" {\n\"n\" 1,\n},\n"
              "}\n"
              "shadow \"vertex_color\" {\n\"n\" 1,\n}\n"
              "}\n");
}

TEST(SceneShaders, KindsAndNullHandles) {
    const std::pair<std::int32_t, std::string> kinds[] = {
        {0, "surface "},
        {1, "shadow "},
        {2, "volume "},
        {3, "reflection map "},
        {4, "// assuming surface shader\nsurface "},
        {-1, "// assuming surface shader\nsurface "},
    };
    for (const auto& [kind, text] : kinds) {
        EXPECT_EQ(written_by([kind = kind](Api& a) {
                      a.begin_shader(nullptr, "t"), a.end_shader();
                      a.assign_shader(kind, a.current_shader());
                      a.assign_shader(kind, nullptr);
                      a.assign_shader_id(kind, 7);
                      EXPECT_FALSE(a.set_parameter_shader("n", nullptr));
                  }),
                  text + "\"t\" {\n}\n" + text + (kind < 0 || kind > 3 ? " 7\n" : "7\n"));
    }
}

// The buffer of an open shader can move as it grows, so it must not be copied into itself.
TEST(SceneShaders, AnOpenShaderCantContainItself) {
    EXPECT_EQ(written_by([](Api& a) {
                  a.begin_shader(nullptr, "t");
                  const qorShaderHandle self = a.current_shader();
                  EXPECT_FALSE(a.set_parameter_shader("n", self));
                  a.set_parameter("n", parameter_code::kShader, &self);
                  a.assign_shader(0, self);
                  a.end_shader();
                  a.assign_shader(0, self);
              }),
              "surface \"t\" {\n\"n\" ,\n}\n");
}

// A binary array brings zero bytes into a shader's buffer, which grows far beyond its first size.
TEST(SceneShaders, BinaryArraysSurviveInABuffer) {
    const std::vector<std::int32_t> zeros(5000);
    const qorArray array = {zeros.data(), 5000};
    EXPECT_TRUE(written_by([&](Api& a) {
                    a.begin_shader(nullptr, "t");
                    a.set_parameter("n", parameter_code::kArray | parameter_code::kInt, &array);
                    a.end_shader();
                    a.assign_shader(0, a.current_shader());
                }) == "surface \"t\" {\n\"n\" [ \1\2\3i\x88\x13\0\0"s + std::string(20000, '\0') +
                          "] ,\n}\n");
}

// An options block switches the output back to the stream, whatever is open.
TEST(SceneShaders, OptionsInAShaderAreWrittenToTheStream) {
    EXPECT_EQ(written_by([](Api& a) {
                  a.begin_shader(nullptr, "t");
                  a.begin_options(), a.end_options();
              }),
              // The open shader would only matter in the output mode with indentation.
              "\noptions {\n}\n");
}

}  // namespace
