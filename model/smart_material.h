#pragma once

#include <string>
#include <utility>

#include "model/material.h"
#include "model/shader_graph.h"

namespace qor {

/// What each material of the host is exported as: colours and texture files, written as a small
/// graph of shaders.
///
/// The base is a matt surface. A specular colour, a specular texture or a roughness makes it a
/// glossy one. A bump texture wraps the base, and an opacity texture wraps the result. Textures are
/// file paths; an empty path means no texture.
class SmartMaterial final : public Material {
public:
    explicit SmartMaterial(std::string name) : Material(std::move(name)) {}

    /// Components are clamped to 0..1.
    void set_diffuse_color(float r, float g, float b) { diffuse_color_ = clamped(r, g, b); }
    /// Components are clamped to 0..1. Any colour, even black, makes the surface glossy.
    void set_specular_color(float r, float g, float b);
    void set_roughness(float roughness);

    /// Whether a matt surface blends its diffuse texture with the diffuse colour.
    void set_blend_color(bool on) { blend_color_ = on; }

    void set_diffuse_texture(std::string path) { diffuse_texture_.path = std::move(path); }
    void set_specular_texture(std::string path) { specular_texture_.path = std::move(path); }
    void set_bump_texture(std::string path) { bump_texture_.path = std::move(path); }
    void set_opacity_texture(std::string path) { opacity_texture_.path = std::move(path); }

    void set_diffuse_uv_scale(float u, float v) { set_scale(diffuse_texture_, u, v); }
    void set_specular_uv_scale(float u, float v) { set_scale(specular_texture_, u, v); }
    void set_bump_uv_scale(float u, float v) { set_scale(bump_texture_, u, v); }
    void set_opacity_uv_scale(float u, float v) { set_scale(opacity_texture_, u, v); }

    void set_bump_height(float height) { bump_height_ = height; }
    void set_opacity_mode(int mode) { opacity_mode_ = mode; }

    /// Whether the base is the matt surface.
    bool is_simple() const;

private:
    static void set_scale(Texture& texture, float u, float v) {
        texture.u_scale = u;
        texture.v_scale = v;
    }
    void emit_surface(qorSceneapi_oo& scene) override;
    int write_base_shader(qorSceneapi_oo& scene) const;

    qorColor diffuse_color_ = {0.75f, 0.5f, 0.5f};
    qorColor specular_color_ = {0.0f, 0.0f, 0.0f};
    bool has_specular_ = false;
    bool has_roughness_ = false;
    bool blend_color_ = false;
    Texture diffuse_texture_;
    Texture specular_texture_;
    Texture bump_texture_;
    Texture opacity_texture_;
    float bump_height_ = 0.1f;
    float roughness_ = 0.0f;
    int opacity_mode_ = 2;
};

}  // namespace qor
