#pragma once

#include <string>

#include "tools/vsqpicture/picture_scene.h"
#include "tools/vsqpicture/ray_scene.h"

namespace vsqpicture {

/// From where a picture is taken: a point or, without perspective, a plane.
class CameraView {
public:
    /// The scene's camera at a frame. `world` has the scene's matrices at that frame.
    static CameraView of(const Camera& camera, const std::vector<Matrix>& world, double frame);

    /// A view with perspective that shows the whole box from above its front right corner.
    static CameraView framing(const SceneBox& box, float aspect);

    /// "front", "right", "top" or "iso", which show the whole scene without perspective.
    static CameraView named(const std::string& name, const RayScene& scene, float aspect);

    /// The ray through a place of the picture, from (0, 0) at the upper left to (1, 1).
    Ray ray(float x, float y, float aspect) const;

    float near() const { return near_; }
    float far() const { return far_; }

private:
    void look(Vec3 direction, Vec3 up);
    void show_all(const RayScene& scene, float aspect);

    Vec3 place_;
    Vec3 right_{1, 0, 0};
    Vec3 up_{0, 0, 1};
    Vec3 forward_{0, 1, 0};
    bool is_perspective_ = true;
    float half_width_ = 0.5f;  ///< of the picture: at the distance 1, or of the plane
    float near_ = 0;
    float far_ = 1e30f;
};

}  // namespace vsqpicture
