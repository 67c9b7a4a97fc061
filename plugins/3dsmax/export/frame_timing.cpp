#include "plugins/3dsmax/export/frame_timing.h"

#include "plugins/3dsmax/export/truncated_int.h"

namespace {

constexpr float kSecondsPerTimeUnit = 0.001f;

// In 64 bits, since the difference of two times may not fit a `TimeValue`.
std::int64_t TicksBetween(TimeValue from, TimeValue to) {
    return static_cast<std::int64_t>(to) - from;
}

}  // namespace

float FrameTiming::FrameCount() const {
    if (ticksPerFrame <= 0) {
        return 1.0f;
    }
    return 1.0f + static_cast<float>(TicksBetween(rangeStart, rangeEnd)) /
                      static_cast<float>(ticksPerFrame);
}

int FrameTiming::LastFrame() const {
    if (ticksPerFrame <= 0) {
        return 0;
    }
    return TruncateToInt(static_cast<double>(TicksBetween(rangeStart, rangeEnd) / ticksPerFrame));
}

float FrameTiming::FrameKeyTime(TimeValue t) const {
    if (ticksPerFrame <= 0) {
        return 0.0f;
    }
    const std::int64_t frame = TicksBetween(rangeStart, t) / ticksPerFrame;
    return static_cast<float>(static_cast<double>(frame) * kSceneTimePerFrame);
}

int FrameTiming::KeyTimestamp(TimeValue t) const {
    return TruncateToInt(static_cast<double>(FrameKeyTime(t)));
}

float FrameTiming::TrackDuration() const {
    return FrameCount() * static_cast<float>(kSceneTimePerFrame) * kSecondsPerTimeUnit;
}

FrameTimes FrameTiming::Times() const {
    // A step longer than any range ends the loop after the first frame.
    constexpr std::int64_t kBeyondRange = std::int64_t{1} << 33;
    return {rangeStart, rangeEnd, ticksPerFrame > 0 ? ticksPerFrame : kBeyondRange};
}

bool FrameTiming::RangeIsWithin(const Interval& valid) const {
    return valid.Start() <= rangeStart && valid.End() >= rangeEnd;
}
