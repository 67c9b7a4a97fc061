#pragma once

#include <string>

#include "importers/sceneapi/dev/scene_types.h"

namespace qor {

class qorSceneapi_oo;

/// How often a texture repeats along each axis of the texture coordinates.
struct UvScale {
    float u = 1.0f;
    float v = 1.0f;
};

/// The channel for `make_opacity_shader` that takes the map as it is.
constexpr int kWholeMap = 5;

// Each of these writes one stage of a surface into the material block that is open, as numbered
// shaders one after the other, and gives the number of the last one, which stands for the stage.
// A stage that wraps another takes that one's number as `inner`. Paths are those of texture files.

int make_texture_shader(qorSceneapi_oo& scene, const std::string& path,
                        const qorColor& default_color, bool blend_color, UvScale scale);

/// A matt surface. Without a path it has no texture.
int make_diffuse_shader(qorSceneapi_oo& scene, const qorColor& color, const std::string& path,
                        bool blend_color, UvScale scale);

/// A glossy surface. Either path can be empty.
int make_plastic_shader(qorSceneapi_oo& scene, const qorColor& diffuse_color,
                        const qorColor& specular_color, const std::string& diffuse_path,
                        const std::string& specular_path, float roughness, UvScale diffuse_scale,
                        UvScale specular_scale);

int make_bump_shader(qorSceneapi_oo& scene, int inner, const std::string& path, float bump_height,
                     UvScale scale);

/// Lets `inner` through where the map is clear. A `channel` below `kWholeMap` takes that channel of
/// the map alone and inverts it.
int make_opacity_shader(qorSceneapi_oo& scene, int inner, const std::string& path, UvScale scale,
                        int opacity_mode, int channel);

/// The same with one value all over.
int make_opacity_value_shader(qorSceneapi_oo& scene, int inner, float value, int opacity_mode);

}  // namespace qor
