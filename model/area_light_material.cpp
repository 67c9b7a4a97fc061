#include "model/area_light_material.h"

#include "importers/sceneapi/dev/parameter_codes.h"
#include "importers/sceneapi/dev/qorscene_api.h"
#include "importers/sceneapi/dev/qorsceneapi_oo.h"

namespace qor {

void AreaLightMaterial::set_lumen(float power_lumen) {
    power_ = power_lumen;
    lumen_ = true;
}

void AreaLightMaterial::set_watt(float power_watt) {
    power_ = power_watt;
    lumen_ = false;
}

void AreaLightMaterial::emit_surface(qorSceneapi_oo& scene) {
    qorScene_api& api = *scene.get_api();
    api.begin_shader(nullptr, "qor_mesh_light");
    scene.set_parameter("color", color_);
    scene.set_parameter("lumen", lumen_);
    scene.set_parameter("power", power_);
    api.end_shader();
    api.assign_shader(shader_kind::kSurface, api.current_shader());
}

}  // namespace qor
