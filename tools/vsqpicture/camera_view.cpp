#include "tools/vsqpicture/camera_view.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace vsqpicture {
namespace {

constexpr double kPi = 3.14159265358979;
constexpr float kRoomAround = 1.08f;

struct NamedView {
    const char* name;
    Vec3 direction;
    Vec3 up;
};

// Z is up.
constexpr NamedView kNamedViews[] = {
    {"front", {0, 1, 0}, {0, 0, 1}},
    {"right", {-1, 0, 0}, {0, 0, 1}},
    {"top", {0, 0, -1}, {0, 1, 0}},
    {"iso", {-1, 1, -0.8f}, {0, 0, 1}},
};

}  // namespace

void CameraView::look(Vec3 direction, Vec3 up) {
    forward_ = normalized(direction);
    right_ = normalized(cross(forward_, up));
    up_ = cross(right_, forward_);
}

CameraView CameraView::of(const Camera& camera, const std::vector<Matrix>& world, double frame) {
    const Matrix local =
        camera.track ? matrix_at(*camera.track, frame * kTimestampsPerFrame) : camera.matrix;
    const Matrix placed = combined(local, world[camera.node]);
    CameraView view;
    view.place_ = transformed_point(placed, {});
    // A camera looks along its negative Z axis; a scale of its matrix doesn't matter.
    view.look(-transformed_direction(placed, {0, 0, 1}), transformed_direction(placed, {0, 1, 0}));
    view.half_width_ = static_cast<float>(std::tan(camera.fov_degrees / 360 * kPi));
    if (camera.clipping.size() == 2) {
        view.near_ = static_cast<float>(camera.clipping[0]);
        view.far_ = static_cast<float>(camera.clipping[1]);
    }
    return view;
}

CameraView CameraView::framing(const SceneBox& box, float aspect) {
    CameraView view;
    view.look({-1, 2, -0.9f}, {0, 0, 1});
    view.half_width_ = 0.36f;  // 40 degrees
    if (box.is_empty()) {
        view.place_ = view.forward_ * -10;
        return view;
    }
    const Vec3 centre = (box.minimum + box.maximum) * 0.5f;
    // The distance at which the corner that comes closest to an edge of the picture is inside.
    float distance = 0;
    for (int corner = 0; corner < 8; ++corner) {
        const Vec3 place = {corner & 1 ? box.minimum.x : box.maximum.x,
                            corner & 2 ? box.minimum.y : box.maximum.y,
                            corner & 4 ? box.minimum.z : box.maximum.z};
        const Vec3 from = place - centre;
        const float aside =
            std::max(std::abs(dot(from, view.right_)), std::abs(dot(from, view.up_)) * aspect);
        distance =
            std::max(distance, aside * kRoomAround / view.half_width_ - dot(from, view.forward_));
    }
    view.place_ = centre - view.forward_ * std::max(distance, 1e-3f);
    return view;
}

CameraView CameraView::named(const std::string& name, const RayScene& scene, float aspect) {
    CameraView view;
    for (const NamedView& known : kNamedViews) {
        if (name == known.name) {
            view.look(known.direction, known.up);
            view.show_all(scene, aspect);
            return view;
        }
    }
    throw std::runtime_error("no view is called '" + name + "'");
}

void CameraView::show_all(const RayScene& scene, float aspect) {
    is_perspective_ = false;
    if (scene.box().is_empty()) {
        return;
    }
    const Vec3 half = (scene.box().maximum - scene.box().minimum) * 0.5f;
    const auto extent = [half](Vec3 axis) {
        return std::abs(axis.x) * half.x + std::abs(axis.y) * half.y + std::abs(axis.z) * half.z;
    };
    half_width_ = std::max(extent(right_), extent(up_) * aspect) * kRoomAround;
    half_width_ = std::max(half_width_, 1e-3f);
    place_ = (scene.box().minimum + scene.box().maximum) * 0.5f -
             forward_ * (extent(forward_) * 1.1f + 1);
}

Ray CameraView::ray(float x, float y, float aspect) const {
    const Vec3 aside =
        right_ * ((2 * x - 1) * half_width_) + up_ * ((1 - 2 * y) * half_width_ / aspect);
    if (is_perspective_) {
        return {place_, normalized(forward_ + aside)};
    }
    return {place_ + aside, forward_};
}

}  // namespace vsqpicture
