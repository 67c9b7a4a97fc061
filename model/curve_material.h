#pragma once

#include <string>
#include <utility>

#include "model/material.h"

namespace qor {

/// A matt surface for hair and other curves that differs a little from strand to strand.
class CurveMaterial final : public Material {
public:
    explicit CurveMaterial(std::string name) : Material(std::move(name)) {}

    /// The colour unless the curves' own are used. Its components are not held to 0..1.
    void set_color(float r, float g, float b) { color_ = {r, g, b}; }
    void set_use_vertex_color(bool on) { use_vertex_color_ = on; }

    /// How far strands differ in value and in hue; 0 is not at all.
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
