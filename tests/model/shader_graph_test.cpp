#include "model/shader_graph.h"

#include <gtest/gtest.h>

#include <regex>

#include "model/smart_material.h"
#include "tests/support/emitted_calls.h"

namespace qor {
namespace {

std::string text_of(SmartMaterial& material) {
    return emitted_text([&material](qorSceneapi_oo& scene) { material.emit(scene); });
}

// The types of the shaders in order, each followed by the numbers of its inputs.
std::string stages(const std::string& text) {
    std::string found;
    const std::regex stage("shader \\d+ (\\w+)|(! \\d+)|\"(blend)_color\" on");
    for (std::sregex_iterator at(text.begin(), text.end(), stage), end; at != end; ++at) {
        found += at->str(1) + at->str(2) + at->str(3) + " ";
    }
    return found;
}

TEST(SmartMaterial, ChoosesItsStagesByWhatIsSet) {
    const struct {
        std::function<void(SmartMaterial&)> fill;
        const char* stages;
    } cases[] = {
        {[](SmartMaterial&) {}, "qor_diffuse "},
        {[](SmartMaterial& m) { m.set_diffuse_texture("d"), m.set_blend_color(true); },
         "texture2_rgb blend qor_diffuse ! 1 "},
        {[](SmartMaterial& m) { m.set_specular_color(0, 0, 0); }, "qor_plastic_simple "},
        {[](SmartMaterial& m) { m.set_roughness(0); }, "qor_plastic_simple "},
        {[](SmartMaterial& m) { m.set_specular_texture("s"); },
         "texture2_rgb qor_plastic_simple ! 1 "},
        {[](SmartMaterial& m) { m.set_bump_texture("b"); },
         "qor_diffuse texture2_rgb qor_bumpmap ! 2 ! 1 "},
        {[](SmartMaterial& m) { m.set_opacity_texture("o"); },
         "qor_diffuse texture2_rgba qor_advanced ! 2 qor_composite "},
    };
    for (const auto& one : cases) {
        SmartMaterial material("m");
        one.fill(material);
        EXPECT_EQ(stages(text_of(material)), one.stages);
    }
}

TEST(SmartMaterial, TexturedMattFormWritesEachOfItsValues) {
    SmartMaterial material("m");
    material.set_diffuse_color(0.25f, 0.5f, 2);
    material.set_diffuse_texture("d"), material.set_diffuse_uv_scale(2, 3);
    EXPECT_NE(text_of(material).find(
                  "#define shader 1 texture2_rgb {\n\"uv_projection\" 4,\n\"texture\" \"d\",\n"
                  "\"uv_scale_u\" 2,\n\"uv_scale_v\" 3,\n\"blend_color\" off,\n"
                  "\"default_color\" 0.25 0.5 1,\n}\n#define shader 2 qor_diffuse {\n"),
              std::string::npos);
}

// Every value differs from its default and from all others, so that no mix-up can pass.
TEST(SmartMaterial, GlossyFormWritesEachOfItsValues) {
    SmartMaterial material("m");
    material.set_diffuse_color(0.25f, 0.5f, 2);
    material.set_specular_color(-1, 0.75f, 0.125f);
    material.set_roughness(0.375f);
    material.set_blend_color(true);  // without effect here
    material.set_diffuse_texture("d"), material.set_diffuse_uv_scale(2, 3);
    material.set_specular_texture("s"), material.set_specular_uv_scale(4, 5);
    material.set_bump_texture("b"), material.set_bump_uv_scale(6, 7);
    material.set_opacity_texture("o"), material.set_opacity_uv_scale(8, 9);
    material.set_bump_height(0.625f);
    material.set_opacity_mode(1);
    // Both textures fall back to the diffuse colour, and the cover comes before the base.
    EXPECT_EQ(text_of(material),
              "material \"m\" {\n"
              "#define shader 1 texture2_rgb {\n\"uv_projection\" 4,\n\"texture\" \"d\",\n"
              "\"uv_scale_u\" 2,\n\"uv_scale_v\" 3,\n\"blend_color\" off,\n"
              "\"default_color\" 0.25 0.5 1,\n}\n"
              "#define shader 2 texture2_rgb {\n\"uv_projection\" 4,\n\"texture\" \"s\",\n"
              "\"uv_scale_u\" 4,\n\"uv_scale_v\" 5,\n\"blend_color\" off,\n"
              "\"default_color\" 0.25 0.5 1,\n}\n"
              "#define shader 3 qor_plastic_simple {\n\"diffuse\" ! 1,\n\"specular\" ! 2,\n"
              "\"diffuse\" 0.25 0.5 1,\n\"specular\" 0 0.75 0.125,\n\"roughness\" 0.375,\n}\n"
              "#define shader 4 texture2_rgb {\n\"texture\" \"b\",\n\"uv_projection\" 4,\n"
              "\"bump_height\" 0.625,\n\"uv_scale_u\" 6,\n\"uv_scale_v\" 7,\n\"bump_mode\" 0,\n}\n"
              "#define shader 5 qor_bumpmap {\n\"bumpmap\" ! 4,\n\"shader\" ! 3,\n}\n"
              "#define shader 6 texture2_rgba {\n\"uv_projection\" 4,\n\"texture\" \"o\",\n"
              "\"uv_scale_u\" 8,\n\"uv_scale_v\" 9,\n}\n"
              "#define shader 7 qor_advanced {\n\"diffuse\" ! 6,\n\"alpha\" 1,\n"
              "\"opacity_mode\" 1,\n\"use_diffuse_map_alpha\" on,\n}\n"
              "#define shader 8 qor_composite {\n\"shaders\" [\n7, 5 ],\n\"opacity_map\" on,\n}\n"
              "surface 8\nflags 4096\n}\n");
}

// Channel 4 is the last single channel.
TEST(ShaderGraph, OpacityInvertsASingleChannel) {
    const auto opacity = [](int channel) {
        return emitted_text([channel](qorSceneapi_oo& scene) {
            const int last = make_opacity_shader(scene, 42, {"o"}, 2, channel);
            EXPECT_EQ(last, channel < kWholeMap ? 5 : 3);
        });
    };
    EXPECT_EQ(stages(opacity(5)), "texture2_rgba qor_advanced ! 1 qor_composite ");
    EXPECT_NE(opacity(4).find("#define shader 2 convert_rgba_to_float {\n\"input\" ! 1,\n"
                              "\"mode\" 4,\n\"input_from\" 0,\n\"input_to\" 1,\n"
                              "\"output_from\" 1,\n\"output_to\" 0,\n}\n"
                              "#define shader 3 edgeshader_float_rgba {\n\"input\" ! 2,\n}\n"
                              "#define shader 4 qor_advanced {\n\"diffuse\" ! 3,\n"),
              std::string::npos);
}

TEST(ShaderGraph, OpacityOfOneValue) {
    EXPECT_EQ(
        emitted_text([](qorSceneapi_oo& scene) {
            EXPECT_EQ(make_opacity_value_shader(scene, 42, 0.25f, 1), 3);
        }),
        "#define shader 1 qor_color_adjust {\n\"color\" 1 1 1,\n\"value\" 0.25,\n}\n"
        "#define shader 2 qor_advanced {\n\"diffuse\" ! 1,\n\"alpha\" 1,\n"
        "\"opacity_mode\" 1,\n\"use_diffuse_map_alpha\" on,\n}\n"
        "#define shader 3 qor_composite {\n\"shaders\" [\n2, 42 ],\n\"opacity_map\" on,\n}\n");
}

}  // namespace
}  // namespace qor
