#include "model/curve_material.h"

#include "importers/sceneapi/dev/parameter_codes.h"
#include "importers/sceneapi/dev/qorscene_api.h"
#include "importers/sceneapi/dev/qorsceneapi_oo.h"

namespace qor {

void CurveMaterial::emit_surface(qorSceneapi_oo& scene) {
    qorScene_api& api = *scene.get_api();

    // This shader is written even if it isn't used.
    const int vertex_color = scene.begin_shader("vertex_color");
    scene.end_shader();

    const int randomize = scene.begin_shader("qor_curve_randomize");
    if (use_vertex_color_) {
        api.set_parameter_id("map", vertex_color);
    } else {
        scene.set_parameter("map", color_);
    }
    scene.set_parameter("hue", hue_);
    scene.set_parameter("value", value_);
    scene.end_shader();

    const int surface = scene.begin_shader("qor_diffuse");
    api.set_parameter_id("diffuse", randomize);
    scene.end_shader();

    api.assign_shader_id(shader_kind::kSurface, surface);
}

}  // namespace qor
