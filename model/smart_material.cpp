#include "model/smart_material.h"

#include "importers/sceneapi/dev/parameter_codes.h"
#include "importers/sceneapi/dev/qorscene_api.h"
#include "importers/sceneapi/dev/qorsceneapi_oo.h"

namespace qor {

void SmartMaterial::set_specular_color(float r, float g, float b) {
    specular_color_ = clamped(r, g, b);
    has_specular_ = true;
}

void SmartMaterial::set_roughness(float roughness) {
    roughness_ = roughness;
    has_roughness_ = true;
}

bool SmartMaterial::is_simple() const {
    return !has_roughness_ && !has_specular_ && specular_texture_.path.empty();
}

void SmartMaterial::emit_surface(qorSceneapi_oo& scene) {
    int surface = write_base_shader(scene);
    if (!bump_texture_.path.empty()) {
        surface = make_bump_shader(scene, surface, bump_texture_, bump_height_);
    }
    if (!opacity_texture_.path.empty()) {
        surface = make_opacity_shader(scene, surface, opacity_texture_, opacity_mode_, kWholeMap);
    }
    scene.get_api()->assign_shader_id(shader_kind::kSurface, surface);
}

int SmartMaterial::write_base_shader(qorSceneapi_oo& scene) const {
    if (is_simple()) {
        return make_diffuse_shader(scene, diffuse_color_, diffuse_texture_, blend_color_);
    }
    return make_plastic_shader(scene, diffuse_color_, specular_color_, diffuse_texture_,
                               specular_texture_, roughness_);
}

}  // namespace qor
