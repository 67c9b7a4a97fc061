#pragma once

#include <string>

#include "importers/sceneapi/dev/scene_types.h"

namespace qor {

class qorSceneapi_oo;

/// An image on a surface.
struct Texture {
    std::string path;      ///< path of the image file; empty for no texture
    float u_scale = 1.0f;  ///< how many times the image repeats along u and v
    float v_scale = 1.0f;
};

/// A `channel` of `make_opacity_shader`: uses the map unchanged.
constexpr int kWholeMap = 5;

// Each function writes one stage of a surface into the open material block, as one or more numbered
// shaders. It returns the number of the last shader, which stands for the whole stage. A stage that
// wraps another takes the number of that stage as `inner`.

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

/// Shows `inner` where the map is transparent. A `channel` below `kWholeMap` uses only that channel
/// of the map, inverted.
int make_opacity_shader(qorSceneapi_oo& scene, int inner, const Texture& texture, int opacity_mode,
                        int channel);

/// Like `make_opacity_shader`, but with the same opacity everywhere.
int make_opacity_value_shader(qorSceneapi_oo& scene, int inner, float value, int opacity_mode);

}  // namespace qor
