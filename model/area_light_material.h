#pragma once

#include <string>
#include <utility>

#include "model/material.h"

namespace qor {

/// A surface that emits light, for the visible shape of a lamp.
class AreaLightMaterial final : public Material {
public:
    explicit AreaLightMaterial(std::string name) : Material(std::move(name)) {}

    /// Components are not clamped to 0..1.
    void set_color(float r, float g, float b) { color_ = {r, g, b}; }

    /// Each of these sets the power together with its unit.
    void set_lumen(float power_lumen);
    void set_watt(float power_watt);

private:
    void emit_surface(qorSceneapi_oo& scene) override;

    qorColor color_ = {1.0f, 1.0f, 1.0f};
    float power_ = 100.0f;  // in lumens if `lumen_`, otherwise in watts
    bool lumen_ = false;
};

}  // namespace qor
