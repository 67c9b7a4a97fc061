#include "plugins/3dsmax/export/frame_timing.h"

float FrameTiming::FrameCount() const {
    return 1.0f + static_cast<float>(rangeEnd - rangeStart) / static_cast<float>(ticksPerFrame);
}

float FrameTiming::FrameKeyTime(TimeValue t) const {
    return static_cast<float>((t - rangeStart) / ticksPerFrame * kSceneTimePerFrame);
}

bool FrameTiming::RangeIsWithin(const Interval& valid) const {
    return valid.Start() <= rangeStart && valid.End() >= rangeEnd;
}
