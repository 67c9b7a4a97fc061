#pragma once

#include <string>
#include <utility>

#include "model/material.h"

namespace qor {

/// A surface that gives off light, for the visible shape of a lamp.
class AreaLightMaterial final : public Material {
public:
    explicit AreaLightMaterial(std::string name) : Material(std::move(name)) {}

    /// Components are not held to 0..1.
    void set_color(float r, float g, float b) { color_ = {r, g, b}; }

    /// Either sets the power and the unit that it is in.
    void set_lumen(float power_lumen);
    void set_watt(float power_watt);

private:
    void emit_surface(qorSceneapi_oo& scene) override;

    qorColor color_ = {1.0f, 1.0f, 1.0f};
    float power_ = 100.0f;  // in lumen or in watt
    bool lumen_ = false;
};

}  // namespace qor
