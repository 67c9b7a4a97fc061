#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "importers/sceneapi/dev/light_node.h"
#include "importers/sceneapi/dev/scene_types.h"

namespace qor {

class Animation;

/// A camera with its projection, its position and its environment.
///
/// It looks along `direction` from `position`, in the space of its matrix. The matrix is the one
/// from `set_transform`; animations, if there are any, replace it.
///
///     LightCamera camera("Camera01");
///     camera.set_fov(45.0f);
///     camera.set_transform(world_from_camera);
///     camera.emit(scene);
class LightCamera : public LightNode {
public:
    explicit LightCamera(std::string name);

    void set_position(float x, float y, float z);
    void set_direction(float x, float y, float z);
    void set_up(float x, float y, float z);
    /// A point to look at, written in addition to the direction. Without this call, no point is
    /// written.
    void set_look_at(float x, float y, float z);

    /// In degrees. The last call of `set_fov` or `set_fov4` counts.
    void set_fov(float degrees);
    /// Four numbers that only the renderer interprets, written in this order.
    void set_fov4(float a, float b, float c, float d);

    /// If `projection` is 1, the view is orthographic and shows the window of `set_window`. With
    /// any other value, it is perspective.
    void set_projection(int projection) { projection_ = projection; }
    /// Four numbers that only the renderer interprets, written in this order.
    void set_window(float a, float b, float c, float d);

    /// Distances from the camera. They are written only if both are above 0 and `far_plane` is the
    /// greater one.
    void set_clipping(float near_plane, float far_plane);

    void set_transform(const qorMatrix& matrix);
    void add_animation(std::shared_ptr<Animation> animation);
    /// Replaces all animations.
    void set_animation(std::shared_ptr<Animation> animation);

    void emit(qorSceneapi_oo& scene) final;

    /// Does nothing: a camera can't be defined for later use.
    void define(qorSceneapi_oo&) final {}
    bool is_defined() const final { return false; }

    /// Writes the environment shader into the camera's block and returns its handle.
    virtual qorShaderHandle emit_environment(qorSceneapi_oo& scene);

private:
    void emit_projection(qorSceneapi_oo& scene) const;
    void emit_orientation(qorSceneapi_oo& scene) const;
    void emit_clipping(qorSceneapi_oo& scene) const;
    void emit_motion(qorSceneapi_oo& scene) const;

    std::string name_;
    qorVector position_ = {0, 0, 0};
    qorVector direction_ = {0, 0, -1};
    qorVector look_at_ = {0, 0, -1};
    qorVector up_ = {0, 1, 0};
    float fov_degrees_ = 60.0f;
    std::array<float, 4> fov4_ = {};
    std::array<float, 4> window_ = {};
    float near_plane_ = -1.0f;
    float far_plane_ = -1.0f;
    std::vector<std::shared_ptr<Animation>> animations_;
    bool uses_fov4_ = false;
    bool has_transform_ = false;
    bool has_look_at_ = false;
    qorMatrix transform_ = {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};
    int projection_ = 0;
};

}  // namespace qor
