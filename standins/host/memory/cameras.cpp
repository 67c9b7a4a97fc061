#include "standins/host/memory/cameras.h"

#include <limits>

#include "standins/host/memory/strict_rules.h"

namespace memhost {

MemoryCamera& MemoryCamera::fov(float radians) {
    fov_radians_ = radians;
    moving_fov_ = nullptr;
    return *this;
}

MemoryCamera& MemoryCamera::fov(std::function<float(TimeValue)> radians) {
    moving_fov_ = std::move(radians);
    return *this;
}

MemoryCamera& MemoryCamera::planes(float near_plane, float far_plane) {
    near_plane_ = near_plane;
    far_plane_ = far_plane;
    return *this;
}

MemoryCamera& MemoryCamera::manual_clip(bool manual) {
    manual_clip_ = manual;
    return *this;
}

MemoryCamera& MemoryCamera::orthographic(bool orthographic) {
    orthographic_ = orthographic;
    return *this;
}

MemoryCamera& MemoryCamera::target_distance(float distance) {
    target_distance_ = distance;
    return *this;
}

// The fields that this camera doesn't support keep the caller's values.
RefResult MemoryCamera::EvalCameraState(TimeValue t, Interval& valid, CameraState* state) {
    if (host_obeys(StrictRule::kCameraStateFails)) {
        state->fov = std::numeric_limits<float>::quiet_NaN();
        state->manualClip = TRUE;
        state->hither = state->yon = 1e30f;
        return REF_FAIL;
    }
    if (moving_fov_) {
        valid &= Interval(t, t);
    }
    state->fov = moving_fov_ ? moving_fov_(t) : fov_radians_;
    state->isOrtho = orthographic_;
    state->tdist = target_distance_;
    state->manualClip = manual_clip_;
    state->hither = near_plane_;
    state->yon = far_plane_;
    return REF_SUCCEED;
}

}  // namespace memhost
