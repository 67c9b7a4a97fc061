#include "model/light_viewset.h"

#include <utility>

#include "importers/sceneapi/dev/qorscene_api.h"
#include "importers/sceneapi/dev/qorsceneapi_oo.h"

namespace qor {

namespace {

constexpr float kGroundSize = 50.0f;
constexpr qorColor kFadedColor = {0.1f, 0.1f, 0.1f};
constexpr int kBackgroundMode = 1;
constexpr int kEnvironmentFlags = 16;

}  // namespace

LightViewset::LightViewset(std::string name, std::string environment_file, int radius)
    : LightCamera(std::move(name)),
      environment_file_(std::move(environment_file)),
      radius_(radius) {}

qorShaderHandle LightViewset::emit_environment(qorSceneapi_oo& scene) {
    qorScene_api& api = *scene.get_api();
    api.begin_shader(nullptr, "qor_envmap");
    scene.set_parameter("texture", environment_file_);
    scene.set_parameter("ground_size", kGroundSize);
    scene.set_parameter("direct_visibility", true);
    scene.set_parameter("faded_color", kFadedColor);
    scene.set_parameter("background_mode", kBackgroundMode);
    scene.set_parameter("radius", radius_);
    const qorShaderHandle shader = api.current_shader();
    api.end_shader();

    // The shader is closed, so these flags go into the camera's block.
    scene.set_parameter("flags", kEnvironmentFlags);
    return shader;
}

}  // namespace qor
