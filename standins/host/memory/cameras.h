#pragma once

#include <functional>
#include <utility>

#include "standins/host/sdk/max.h"

namespace memhost {

/// A camera, with or without a target. The target is a separate node, which the camera doesn't
/// refer to.
class MemoryCamera final : public CameraObject {
public:
    /// The horizontal field of view.
    MemoryCamera& fov(float radians);
    /// A field of view that changes over time.
    MemoryCamera& fov(std::function<float(TimeValue)> radians);
    /// Distances from the camera. The planes clip only with `manual_clip`.
    MemoryCamera& planes(float near_plane, float far_plane);
    MemoryCamera& manual_clip(bool manual = true);
    MemoryCamera& orthographic(bool orthographic = true);
    MemoryCamera& target_distance(float distance);

    RefResult EvalCameraState(TimeValue t, Interval& valid, CameraState* state) override;

private:
    float fov_radians_ = 0.785398163f;
    std::function<float(TimeValue)> moving_fov_;  // empty for a constant field of view
    float near_plane_ = 1;
    float far_plane_ = 1000;
    float target_distance_ = 160;
    bool manual_clip_ = false;
    bool orthographic_ = false;
};

}  // namespace memhost
