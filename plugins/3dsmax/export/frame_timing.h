#pragma once

#include "plugins/3dsmax/export/host.h"

/// One frame in the scene's own time, whatever the host's frame rate.
inline constexpr double kSceneTimePerFrame = 33.0;

/// The host's animation range and the time under way, in host ticks.
struct FrameTiming {
    TimeValue rangeStart;
    TimeValue rangeEnd;
    TimeValue time;
    int ticksPerFrame;

    /// Frames in the range, both ends counted. Not whole if the range isn't.
    float FrameCount() const;

    /// The scene's time of the frame that begins at `t` or last before it, counted from the start
    /// of the range.
    float FrameKeyTime(TimeValue t) const;

    /// True if what holds in `valid` holds over the whole range.
    bool RangeIsWithin(const Interval& valid) const;
};
