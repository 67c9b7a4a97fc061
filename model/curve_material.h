#pragma once

#include <string>
#include <utility>

#include "model/material.h"

namespace qor {

/// A matt surface for hair and other curves. Its colour varies a little from strand to strand.
class CurveMaterial final : public Material {
public:
    explicit CurveMaterial(std::string name) : Material(std::move(name)) {}

    /// The colour that is used without vertex colours. Components are not clamped to 0..1.
    void set_color(float r, float g, float b) { color_ = {r, g, b}; }
    void set_use_vertex_color(bool on) { use_vertex_color_ = on; }

    /// How much the strands vary in value and in hue; 0 means no variation.
    void set_value(float value) { value_ = value; }
    void set_hue(float hue) { hue_ = hue; }

private:
    void emit_surface(qorSceneapi_oo& scene) override;

    qorColor color_ = {0.75f, 0.5f, 0.5f};
    bool use_vertex_color_ = false;
    float value_ = 0.1f;
    float hue_ = 0.1f;
};

}  // namespace qor
