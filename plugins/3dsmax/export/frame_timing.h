#pragma once

#include <cstdint>

#include "plugins/3dsmax/export/host.h"

/// One frame in the scene's own time, whatever the host's frame rate.
inline constexpr double kSceneTimePerFrame = 33.0;

/// The host's animation range and the time under way, in host ticks. Without a frame length above 0
/// the range is one frame.
struct FrameTiming {
    TimeValue rangeStart;
    TimeValue rangeEnd;
    TimeValue time;
    int ticksPerFrame;

    /// Frames in the range, both ends counted. Not whole if the range isn't.
    float FrameCount() const;

    /// The number of the last whole frame, counted from 0 at the start of the range.
    int LastFrame() const;

    /// The scene's time of the frame that begins at `t` or last before it, counted from the start
    /// of the range.
    float FrameKeyTime(TimeValue t) const;

    /// The same as the timestamp of a key.
    int KeyTimestamp(TimeValue t) const;

    /// How long a track of the whole range plays, in seconds of the scene's time.
    float TrackDuration() const;

    /// Calls `visit` with the time of each frame, in order. A range that ends before it starts has
    /// none.
    template <typename Visit>
    void ForEachFrame(Visit visit) const {
        // Wider than a time, since the step past the last frame may leave the range of times.
        for (std::int64_t t = rangeStart; t <= rangeEnd; t += ticksPerFrame) {
            visit(static_cast<TimeValue>(t));
            if (ticksPerFrame <= 0) {
                return;
            }
        }
    }

    /// The same with the frame's number, from 0, for as long as nobody cancels in the host. It is
    /// asked before each frame, and not again after a cancel.
    template <typename Visit>
    void ForEachFrameUntilCancel(Interface* host, Visit visit) const {
        int number = 0;
        bool cancelled = false;
        ForEachFrame([&](TimeValue t) {
            cancelled = cancelled || host->GetCancel();
            if (!cancelled) {
                visit(t, number);
                ++number;
            }
        });
    }

    /// True if what holds in `valid` holds over the whole range.
    bool RangeIsWithin(const Interval& valid) const;
};
