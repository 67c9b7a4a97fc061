#include "model/light_camera.h"

#include <utility>

#include "importers/sceneapi/dev/parameter_codes.h"
#include "importers/sceneapi/dev/qorscene_api.h"
#include "importers/sceneapi/dev/qorsceneapi_oo.h"
#include "model/animation.h"

namespace qor {

namespace {

constexpr int kOrthographic = 1;

// The environment image that comes with the renderer.
constexpr char kStockEnvironment[] = "startup.hdr";
constexpr int kStockFormat = 3;
constexpr float kStockRadius = 25.0f;

qorVector widened(float x, float y, float z) {
    return {static_cast<double>(x), static_cast<double>(y), static_cast<double>(z)};
}

}  // namespace

LightCamera::LightCamera(std::string name) : name_(std::move(name)) {}

void LightCamera::set_position(float x, float y, float z) {
    position_ = widened(x, y, z);
}

void LightCamera::set_direction(float x, float y, float z) {
    direction_ = widened(x, y, z);
}

void LightCamera::set_up(float x, float y, float z) {
    up_ = widened(x, y, z);
}

void LightCamera::set_look_at(float x, float y, float z) {
    look_at_ = widened(x, y, z);
    has_look_at_ = true;
}

void LightCamera::set_fov(float degrees) {
    fov_degrees_ = degrees;
    uses_fov4_ = false;
}

void LightCamera::set_fov4(float a, float b, float c, float d) {
    fov4_ = {a, b, c, d};
    uses_fov4_ = true;
}

void LightCamera::set_window(float a, float b, float c, float d) {
    window_ = {a, b, c, d};
}

void LightCamera::set_clipping(float near_plane, float far_plane) {
    near_plane_ = near_plane;
    far_plane_ = far_plane;
}

void LightCamera::set_transform(const qorMatrix& matrix) {
    transform_ = matrix;
    has_transform_ = true;
}

void LightCamera::add_animation(std::shared_ptr<Animation> animation) {
    animations_.push_back(std::move(animation));
}

void LightCamera::set_animation(std::shared_ptr<Animation> animation) {
    animations_.clear();
    add_animation(std::move(animation));
}

void LightCamera::emit(qorSceneapi_oo& scene) {
    qorScene_api& api = *scene.get_api();

    api.begin_camera(name_.c_str());
    emit_projection(scene);
    const qorShaderHandle environment = emit_environment(scene);
    api.set_parameter("reflection map", parameter_code::kShader, &environment);
    emit_orientation(scene);
    emit_clipping(scene);
    emit_motion(scene);
    api.end_camera();
}

void LightCamera::emit_projection(qorSceneapi_oo& scene) const {
    qorScene_api& api = *scene.get_api();
    if (projection_ == kOrthographic) {
        scene.set_parameter("projection", std::string("orthographic"));
        api.set_parameter("window", parameter_code::kFloat4Too, window_.data());
        return;
    }
    scene.set_parameter("projection", std::string("perspective"));
    if (uses_fov4_) {
        api.set_parameter("fov4", parameter_code::kFloat4Too, fov4_.data());
    } else {
        scene.set_parameter("fov", fov_degrees_);
    }
}

void LightCamera::emit_orientation(qorSceneapi_oo& scene) const {
    scene.set_parameter("position", position_);
    scene.set_parameter("direction", direction_);
    if (has_look_at_) {
        scene.set_parameter("look_at", look_at_);
    }
    scene.set_parameter("up", up_);
}

void LightCamera::emit_clipping(qorSceneapi_oo& scene) const {
    if (near_plane_ > 0.0f && far_plane_ > 0.0f && far_plane_ > near_plane_) {
        const float planes[2] = {near_plane_, far_plane_};
        scene.get_api()->set_parameter("clipping", parameter_code::kFloat2, planes);
    }
}

void LightCamera::emit_motion(qorSceneapi_oo& scene) const {
    for (const std::shared_ptr<Animation>& animation : animations_) {
        scene.emit(*animation);
    }
    if (animations_.empty() && has_transform_) {
        scene.transform(transform_);
    }
}

qorShaderHandle LightCamera::emit_environment(qorSceneapi_oo& scene) {
    qorScene_api& api = *scene.get_api();
    api.begin_shader(nullptr, "qor_envmap");
    scene.set_parameter("texture", std::string(kStockEnvironment));
    scene.set_parameter("format", kStockFormat);
    scene.set_parameter("radius", kStockRadius);
    const qorShaderHandle shader = api.current_shader();
    api.end_shader();
    return shader;
}

}  // namespace qor
