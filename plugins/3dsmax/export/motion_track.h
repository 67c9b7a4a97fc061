#pragma once

#include <string>

#include "model/fbx_animation.h"
#include "plugins/3dsmax/export/frame_timing.h"

/// A track over the whole range, with no keys yet and a name that starts with `owner`.
inline qor::FBXAnimation MakeMotionTrack(const std::string& owner, const FrameTiming& timing) {
    return qor::FBXAnimation(owner + "3ds_animation", 0.0f, timing.TrackDuration(), true);
}
