#pragma once

#include <string>

#include "importers/sceneapi/dev/scene_types.h"

namespace qor {

class qorSceneapi_oo;

/// A picture on a surface.
struct Texture {
    std::string path;      ///< of its file; empty for no texture
    float u_scale = 1.0f;  ///< how often it repeats along each axis of the texture coordinates
    float v_scale = 1.0f;
};

/// The channel for `make_opacity_shader` that takes the map as it is.
constexpr int kWholeMap = 5;

// Each of these writes one stage of a surface into the material block that is open, as numbered
// shaders one after the other, and gives the number of the last one, which stands for the stage.
// A stage that wraps another takes that one's number as `inner`.

int make_texture_shader(qorSceneapi_oo& scene, const Texture& texture,
                        const qorColor& default_color, bool blend_color);

/// A matt surface; the texture is optional.
int make_diffuse_shader(qorSceneapi_oo& scene, const qorColor& color, const Texture& texture,
                        bool blend_color);

/// A glossy surface; both textures are optional.
int make_plastic_shader(qorSceneapi_oo& scene, const qorColor& diffuse_color,
                        const qorColor& specular_color, const Texture& diffuse_texture,
                        const Texture& specular_texture, float roughness);

int make_bump_shader(qorSceneapi_oo& scene, int inner, const Texture& texture, float bump_height);

/// Lets `inner` through where the map is clear. A `channel` below `kWholeMap` takes that channel of
/// the map alone and inverts it.
int make_opacity_shader(qorSceneapi_oo& scene, int inner, const Texture& texture, int opacity_mode,
                        int channel);

/// The same with one value all over.
int make_opacity_value_shader(qorSceneapi_oo& scene, int inner, float value, int opacity_mode);

}  // namespace qor
