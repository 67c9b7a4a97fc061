#pragma once

#include <string>
#include <utility>

#include "model/material.h"

namespace qor {

/// A matt surface with one colour or with vertex colours.
class Diffuse final : public Material {
public:
    explicit Diffuse(std::string name) : Material(std::move(name)) {}

    /// Components are clamped to 0..1.
    void set_color(float r, float g, float b) { color_ = clamped(r, g, b); }
    const qorColor& get_color() const { return color_; }

    /// The colour of `set_color` is written even if vertex colours are used.
    void set_use_vertex_color(bool on) { use_vertex_color_ = on; }

private:
    void emit_surface(qorSceneapi_oo& scene) override;
    qorShaderHandle write_plain_shader(qorSceneapi_oo& scene) const;
    qorShaderHandle write_vertex_color_shader(qorSceneapi_oo& scene) const;

    qorColor color_ = {0.75f, 0.5f, 0.5f};
    bool use_vertex_color_ = false;
};

}  // namespace qor
