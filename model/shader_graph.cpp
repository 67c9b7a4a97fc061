#include "model/shader_graph.h"

#include <cstdint>

#include "importers/sceneapi/dev/parameter_codes.h"
#include "importers/sceneapi/dev/qorscene_api.h"
#include "importers/sceneapi/dev/qorsceneapi_oo.h"

namespace qor {

namespace {

constexpr int kUvProjection = 4;
constexpr int kBumpMode = 0;
constexpr int kNoShader = 0;  // the numbers of shaders start at 1
constexpr qorColor kWhite = {1.0f, 1.0f, 1.0f};

void set_input(qorSceneapi_oo& scene, const char* name, int shader) {
    scene.get_api()->set_parameter_id(name, shader);
}

void set_uv_scale(qorSceneapi_oo& scene, const Texture& texture) {
    scene.set_parameter("uv_scale_u", texture.u_scale);
    scene.set_parameter("uv_scale_v", texture.v_scale);
}

int make_optional_texture(qorSceneapi_oo& scene, const Texture& texture,
                          const qorColor& default_color, bool blend_color) {
    if (texture.path.empty()) {
        return kNoShader;
    }
    return make_texture_shader(scene, texture, default_color, blend_color);
}

void set_optional_input(qorSceneapi_oo& scene, const char* name, int shader) {
    if (shader != kNoShader) {
        set_input(scene, name, shader);
    }
}

// Makes a map from one channel of `map`, with transparent and opaque exchanged.
int make_inverted_channel(qorSceneapi_oo& scene, int map, int channel) {
    const int value = scene.begin_shader("convert_rgba_to_float");
    set_input(scene, "input", map);
    scene.set_parameter("mode", channel);
    scene.set_parameter("input_from", 0.0f);
    scene.set_parameter("input_to", 1.0f);
    scene.set_parameter("output_from", 1.0f);
    scene.set_parameter("output_to", 0.0f);
    scene.end_shader();

    const int inverted = scene.begin_shader("edgeshader_float_rgba");
    set_input(scene, "input", value);
    scene.end_shader();
    return inverted;
}

void add_shader_element(qorSceneapi_oo& scene, int shader) {
    const std::int32_t number = shader;
    scene.get_api()->add_array_element(parameter_code::kInt, &number);
}

// Lays a surface over `inner` that takes its opacity from `map`.
int make_opacity_composite(qorSceneapi_oo& scene, int inner, int map, int opacity_mode) {
    const int cover = scene.begin_shader("qor_advanced");
    set_input(scene, "diffuse", map);
    scene.set_parameter("alpha", 1.0f);
    scene.set_parameter("opacity_mode", opacity_mode);
    scene.set_parameter("use_diffuse_map_alpha", true);
    scene.end_shader();

    const int composite = scene.begin_shader("qor_composite");
    scene.get_api()->begin_array("shaders");
    add_shader_element(scene, cover);
    add_shader_element(scene, inner);
    scene.get_api()->end_array();
    scene.set_parameter("opacity_map", true);
    scene.end_shader();
    return composite;
}

}  // namespace

int make_texture_shader(qorSceneapi_oo& scene, const Texture& texture,
                        const qorColor& default_color, bool blend_color) {
    const int shader = scene.begin_shader("texture2_rgb");
    scene.set_parameter("uv_projection", kUvProjection);
    scene.set_parameter("texture", texture.path);
    set_uv_scale(scene, texture);
    scene.set_parameter("blend_color", blend_color);
    scene.set_parameter("default_color", default_color);
    scene.end_shader();
    return shader;
}

int make_diffuse_shader(qorSceneapi_oo& scene, const qorColor& color, const Texture& texture,
                        bool blend_color) {
    const int map = make_optional_texture(scene, texture, color, blend_color);

    const int diffuse = scene.begin_shader("qor_diffuse");
    set_optional_input(scene, "diffuse", map);
    scene.set_parameter("diffuse", color);
    scene.end_shader();
    return diffuse;
}

int make_plastic_shader(qorSceneapi_oo& scene, const qorColor& diffuse_color,
                        const qorColor& specular_color, const Texture& diffuse_texture,
                        const Texture& specular_texture, float roughness) {
    // Both textures fall back to the diffuse colour.
    const int diffuse_map = make_optional_texture(scene, diffuse_texture, diffuse_color, false);
    const int specular_map = make_optional_texture(scene, specular_texture, diffuse_color, false);

    const int plastic = scene.begin_shader("qor_plastic_simple");
    set_optional_input(scene, "diffuse", diffuse_map);
    set_optional_input(scene, "specular", specular_map);
    scene.set_parameter("diffuse", diffuse_color);
    scene.set_parameter("specular", specular_color);
    scene.set_parameter("roughness", roughness);
    scene.end_shader();
    return plastic;
}

int make_bump_shader(qorSceneapi_oo& scene, int inner, const Texture& texture, float bump_height) {
    const int map = scene.begin_shader("texture2_rgb");
    scene.set_parameter("texture", texture.path);
    scene.set_parameter("uv_projection", kUvProjection);
    scene.set_parameter("bump_height", bump_height);
    set_uv_scale(scene, texture);
    scene.set_parameter("bump_mode", kBumpMode);
    scene.end_shader();

    const int bump = scene.begin_shader("qor_bumpmap");
    set_input(scene, "bumpmap", map);
    set_input(scene, "shader", inner);
    scene.end_shader();
    return bump;
}

int make_opacity_shader(qorSceneapi_oo& scene, int inner, const Texture& texture, int opacity_mode,
                        int channel) {
    int map = scene.begin_shader("texture2_rgba");
    scene.set_parameter("uv_projection", kUvProjection);
    scene.set_parameter("texture", texture.path);
    set_uv_scale(scene, texture);
    scene.end_shader();

    if (channel < kWholeMap) {
        map = make_inverted_channel(scene, map, channel);
    }
    return make_opacity_composite(scene, inner, map, opacity_mode);
}

int make_opacity_value_shader(qorSceneapi_oo& scene, int inner, float value, int opacity_mode) {
    const int map = scene.begin_shader("qor_color_adjust");
    scene.set_parameter("color", kWhite);
    scene.set_parameter("value", value);
    scene.end_shader();
    return make_opacity_composite(scene, inner, map, opacity_mode);
}

}  // namespace qor
