#include "model/diffuse.h"

#include "importers/sceneapi/dev/parameter_codes.h"
#include "importers/sceneapi/dev/qorscene_api.h"
#include "importers/sceneapi/dev/qorsceneapi_oo.h"

namespace qor {

namespace {

// The colour of a vertex that has none.
constexpr qorColor kDefaultVertexColor = {0.8f, 0.8f, 0.8f};

}  // namespace

void Diffuse::emit_surface(qorSceneapi_oo& scene) {
    const qorShaderHandle surface =
        use_vertex_color_ ? write_vertex_color_shader(scene) : write_plain_shader(scene);
    scene.get_api()->assign_shader(shader_kind::kSurface, surface);
}

qorShaderHandle Diffuse::write_plain_shader(qorSceneapi_oo& scene) const {
    qorScene_api& api = *scene.get_api();
    api.begin_shader(nullptr, "qor_diffuse");
    scene.set_parameter("diffuse", color_);
    const qorShaderHandle surface = api.current_shader();
    api.end_shader();
    return surface;
}

qorShaderHandle Diffuse::write_vertex_color_shader(qorSceneapi_oo& scene) const {
    qorScene_api& api = *scene.get_api();
    // This push has no matching pop: the surface must stay the current shader until its end, and
    // the next shader starts with its own buffer anyway.
    api.push_shader();
    api.begin_shader(nullptr, "qor_diffuse");

    api.push_shader();
    api.begin_shader(nullptr, "vertex_color");
    scene.set_parameter("default_color", kDefaultVertexColor);
    api.end_shader();
    const qorShaderHandle vertex_color = api.current_shader();
    api.pop_shader();

    scene.set_parameter("diffuse", color_);
    api.set_parameter_shader("diffuse", vertex_color);
    api.end_shader();
    return api.current_shader();
}

}  // namespace qor
