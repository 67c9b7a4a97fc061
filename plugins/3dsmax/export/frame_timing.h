#pragma once

#include <cstdint>

#include "plugins/3dsmax/export/host.h"

/// The length of a frame in units of scene time, whatever the host's frame rate.
inline constexpr double kSceneTimePerFrame = 33.0;

/// The times of all frames in a range, in host ticks.
class FrameTimes {
public:
    class Iterator {
    public:
        // 64 bits, since the step past the last frame may overflow a `TimeValue`.
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

/// The host's animation range and the current time, in host ticks. If `ticksPerFrame` isn't above
/// 0, the range counts as one frame.
struct FrameTiming {
    TimeValue rangeStart;
    TimeValue rangeEnd;
    TimeValue time;
    int ticksPerFrame;

    /// The number of frames in the range, including both ends. Has a fraction if the range isn't a
    /// whole number of frames.
    float FrameCount() const;

    /// The number of the last whole frame, counted from 0 at the start of the range.
    int LastFrame() const;

    /// The scene time, counted from the start of the range, of the last frame that begins at or
    /// before `t`.
    float FrameKeyTime(TimeValue t) const;

    /// `FrameKeyTime` as a whole number, for the timestamp of a key.
    int KeyTimestamp(TimeValue t) const;

    /// The duration of a track over the whole range, in seconds of scene time.
    float TrackDuration() const;

    /// The time of each frame, in order, for a range-based `for` loop. Empty if the range ends
    /// before it starts.
    FrameTimes Times() const;

    /// Whether `valid` covers the whole range.
    bool RangeIsWithin(const Interval& valid) const;
};
