#include "model/shader_graph.h"

#include <gtest/gtest.h>

#include <regex>

#include "model/smart_material.h"
#include "tests/support/emitted_calls.h"

namespace qor {
namespace {

using Calls = std::vector<std::string>;

// The types of the numbered shaders among the calls, in their order.
std::string shader_types(const Calls& calls) {
    std::string types;
    for (const std::string& call : calls) {
        std::smatch match;
        if (std::regex_match(call, match, std::regex("begin_shader_id (\\w+) \\d+"))) {
            types += (types.empty() ? "" : " ") + match[1].str();
        }
    }
    return types;
}

Calls calls_of(SmartMaterial& material) {
    return emitted_calls([&material](qorSceneapi_oo& scene) { material.emit(scene); });
}

// Which stages there are depends on what is set.
TEST(SmartMaterial, ChoosesItsStages) {
    const struct {
        std::function<void(SmartMaterial&)> fill;
        const char* types;
    } cases[] = {
        {[](SmartMaterial&) {}, "qor_diffuse"},
        {[](SmartMaterial& m) { m.set_diffuse_texture("d"); }, "texture2_rgb qor_diffuse"},
        {[](SmartMaterial& m) { m.set_specular_color(0, 0, 0); }, "qor_plastic_simple"},
        {[](SmartMaterial& m) { m.set_roughness(0); }, "qor_plastic_simple"},
        {[](SmartMaterial& m) { m.set_specular_texture("s"); }, "texture2_rgb qor_plastic_simple"},
        {[](SmartMaterial& m) { m.set_bump_texture("b"); }, "qor_diffuse texture2_rgb qor_bumpmap"},
        {[](SmartMaterial& m) { m.set_opacity_texture("o"); },
         "qor_diffuse texture2_rgba qor_advanced qor_composite"},
        {[](SmartMaterial& m) {
             m.set_diffuse_texture("d"), m.set_bump_texture("b"), m.set_opacity_texture("o");
         },
         "texture2_rgb qor_diffuse texture2_rgb qor_bumpmap texture2_rgba qor_advanced "
         "qor_composite"},
    };
    for (const auto& one : cases) {
        SmartMaterial material("m");
        one.fill(material);
        EXPECT_EQ(shader_types(calls_of(material)), one.types);
    }
}

// As it stands in a file. The colour follows the texture, and the cover comes before the base.
TEST(SmartMaterial, MattFormWithOpacity) {
    SmartMaterial material("m");
    material.set_diffuse_texture("d");
    material.set_blend_color(true);
    material.set_opacity_texture("o");
    EXPECT_EQ(
        emitted_text([&material](qorSceneapi_oo& scene) { material.emit(scene); }),
        "material \"m\" {\n"
        "#define shader 1 texture2_rgb {\n"
        "\"uv_projection\" 4,\n\"texture\" \"d\",\n\"uv_scale_u\" 1,\n\"uv_scale_v\" 1,\n"
        "\"blend_color\" on,\n\"default_color\" 0.75 0.5 0.5,\n}\n"
        "#define shader 2 qor_diffuse {\n\"diffuse\" ! 1,\n\"diffuse\" 0.75 0.5 0.5,\n}\n"
        "#define shader 3 texture2_rgba {\n"
        "\"uv_projection\" 4,\n\"texture\" \"o\",\n\"uv_scale_u\" 1,\n\"uv_scale_v\" 1,\n}\n"
        "#define shader 4 qor_advanced {\n"
        "\"diffuse\" ! 3,\n\"alpha\" 1,\n\"opacity_mode\" 2,\n\"use_diffuse_map_alpha\" on,\n}\n"
        "#define shader 5 qor_composite {\n"
        "\"shaders\" [\n4, 2 ],\n\"opacity_map\" on,\n}\n"
        "surface 5\nflags 4096\n}\n");
}

// Every value differs from its default and from every other, so that none can stand in for another.
TEST(SmartMaterial, GlossyFormTakesEachOfItsValues) {
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
    EXPECT_EQ(
        calls_of(material),
        (Calls{"begin_material m",
               // Both textures fall back to the diffuse colour.
               "begin_shader_id texture2_rgb 1", "uv_projection 4", "texture \"d\"",
               "uv_scale_u 2.000000", "uv_scale_v 3.000000", "blend_color off",
               "default_color 0.250000 0.500000 1.000000", "end_shader",
               "begin_shader_id texture2_rgb 2", "uv_projection 4", "texture \"s\"",
               "uv_scale_u 4.000000", "uv_scale_v 5.000000", "blend_color off",
               "default_color 0.250000 0.500000 1.000000", "end_shader",
               "begin_shader_id qor_plastic_simple 3", "diffuse shader 1", "specular shader 2",
               "diffuse 0.250000 0.500000 1.000000", "specular 0.000000 0.750000 0.125000",
               "roughness 0.375000", "end_shader", "begin_shader_id texture2_rgb 4",
               "texture \"b\"", "uv_projection 4", "bump_height 0.625000", "uv_scale_u 6.000000",
               "uv_scale_v 7.000000", "bump_mode 0", "end_shader", "begin_shader_id qor_bumpmap 5",
               "bumpmap shader 4", "shader shader 3", "end_shader",
               "begin_shader_id texture2_rgba 6", "uv_projection 4", "texture \"o\"",
               "uv_scale_u 8.000000", "uv_scale_v 9.000000", "end_shader",
               "begin_shader_id qor_advanced 7", "diffuse shader 6", "alpha 1.000000",
               "opacity_mode 1", "use_diffuse_map_alpha on", "end_shader",
               "begin_shader_id qor_composite 8", "begin_array shaders", "add_array_element 7",
               "add_array_element 5", "end_array", "opacity_map on", "end_shader",
               "assign_shader_id 0 8", "set_flags 4096", "end_material"}));
}

// Channel 4 is the last that is taken alone.
TEST(ShaderGraph, OpacityInvertsASingleChannel) {
    const auto opacity = [](int channel) {
        return emitted_calls([channel](qorSceneapi_oo& scene) {
            const int last = make_opacity_shader(scene, 42, "o", {1, 1}, 2, channel);
            EXPECT_EQ(last, channel < kWholeMap ? 5 : 3);
        });
    };
    EXPECT_EQ(shader_types(opacity(5)), "texture2_rgba qor_advanced qor_composite");
    const Calls calls = opacity(4);
    const Calls inserted(calls.begin() + 6, calls.begin() + 19);
    EXPECT_EQ(inserted,
              (Calls{"begin_shader_id convert_rgba_to_float 2", "input shader 1", "mode 4",
                     "input_from 0.000000", "input_to 1.000000", "output_from 1.000000",
                     "output_to 0.000000", "end_shader", "begin_shader_id edgeshader_float_rgba 3",
                     "input shader 2", "end_shader", "begin_shader_id qor_advanced 4",
                     "diffuse shader 3"}));
}

TEST(ShaderGraph, OpacityOfOneValue) {
    EXPECT_EQ(
        emitted_calls([](qorSceneapi_oo& scene) {
            EXPECT_EQ(make_opacity_value_shader(scene, 42, 0.25f, 1), 3);
        }),
        (Calls{"begin_shader_id qor_color_adjust 1", "color 1.000000 1.000000 1.000000",
               "value 0.250000", "end_shader", "begin_shader_id qor_advanced 2", "diffuse shader 1",
               "alpha 1.000000", "opacity_mode 1", "use_diffuse_map_alpha on", "end_shader",
               "begin_shader_id qor_composite 3", "begin_array shaders", "add_array_element 2",
               "add_array_element 42", "end_array", "opacity_map on", "end_shader"}));
}

}  // namespace
}  // namespace qor
