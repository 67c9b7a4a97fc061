#pragma once

#include <cstdint>

#include "plugins/3dsmax/export/host.h"

/// One frame in the scene's own time, whatever the host's frame rate.
inline constexpr double kSceneTimePerFrame = 33.0;

/// The times of the frames of a range.
class FrameTimes {
public:
    class Iterator {
    public:
        // Wider than a time, since the step past the last frame may leave the range of times.
        Iterator(std::int64_t t, std::int64_t step) : t_(t), step_(step) {}
        TimeValue operator*() const { return static_cast<TimeValue>(t_); }
        Iterator& operator++() {
            t_ += step_;
            return *this;
        }
        bool operator!=(const Iterator& end) const { return t_ < end.t_; }

    private:
        std::int64_t t_;
        std::int64_t step_;
    };

    FrameTimes(TimeValue first, TimeValue last, std::int64_t step)
        : first_(first), last_(last), step_(step) {}
    Iterator begin() const { return {first_, step_}; }
    Iterator end() const { return {std::int64_t{last_} + 1, step_}; }

private:
    TimeValue first_;
    TimeValue last_;
    std::int64_t step_;
};

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

    /// The time of each frame, in order, for a `for` loop. A range that ends before it starts has
    /// none.
    FrameTimes Times() const;

    /// True if what holds in `valid` holds over the whole range.
    bool RangeIsWithin(const Interval& valid) const;
};
