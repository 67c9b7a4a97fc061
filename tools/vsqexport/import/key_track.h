#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

#include <assimp/anim.h>

#include "standins/host/sdk/max.h"
#include "tools/vsqexport/import/interpolation.h"

namespace vsqexport {

/// A value of `N` numbers over time, in ticks of the file, given by keys.
///
/// Before the first key and after the last, the nearest key's value holds, unless `finish` is told
/// that the track is extrapolated or repeats.
template <std::size_t N>
class KeyTrack {
public:
    using Value = std::array<double, N>;

    /// The values around a time: `part` is 0 at the value `from` and 1 at `to`.
    struct Span {
        const Value* from;
        const Value* to;
        double part;
        std::size_t to_key = 0;  ///< 0 if both values are of one key
    };

    void interpolate(Interpolation interpolation) { interpolation_ = interpolation; }
    bool is_cubic() const { return interpolation_ == Interpolation::kCubic; }

    /// Keys can come in any order. Drops a key that holds NaN or infinity, and returns false. The
    /// slopes before and behind the key, per tick, are those of a cubic track.
    bool add(double time, const Value& value, const Value& in = {}, const Value& out = {}) {
        const bool is_sound =
            std::isfinite(time) && is_finite(value) && is_finite(in) && is_finite(out);
        if (is_sound) {
            keys_.push_back({time, value, in, out});
        }
        return is_sound;
    }

    /// Call this after all keys are added. Without any keys, the track has the value `rest`.
    void finish(const Value& rest, aiAnimBehaviour before_first, aiAnimBehaviour behind_last) {
        if (keys_.empty()) {
            keys_.push_back({0.0, rest, {}, {}});
        }
        std::stable_sort(keys_.begin(), keys_.end(),
                         [](const Key& a, const Key& b) { return a.time < b.time; });
        before_first_ = before_first;
        behind_last_ = behind_last;
    }

    /// Calls `visit(previous, value)` for each value after the first.
    template <typename Visit>
    void for_each_pair(Visit visit) {
        for (std::size_t i = 1; i < keys_.size(); ++i) {
            visit(keys_[i - 1].value, keys_[i].value);
        }
    }

    bool is_still() const {
        for (std::size_t i = 1; i < keys_.size(); ++i) {
            if (!rests_between(i - 1, i)) {
                return false;
            }
        }
        return true;
    }

    double end() const { return keys_.back().time; }

    Span span_at(double time) const {
        const double first = keys_.front().time;
        const double last = keys_.back().time;
        if (time < first || time > last || first == last) {
            const Value* nearest = time < first ? &keys_.front().value : &keys_.back().value;
            const aiAnimBehaviour behaviour = time < first ? before_first_ : behind_last_;
            if (first == last) {
                return {nearest, nearest, 0};
            }
            if (behaviour == aiAnimBehaviour_REPEAT) {
                time = std::fmod(time - first, last - first);
                time += time < 0.0 ? last : first;
            } else if (behaviour != aiAnimBehaviour_LINEAR) {
                return {nearest, nearest, 0};
            }
        }
        const std::size_t to = next_key(time);
        const double gap = keys_[to].time - keys_[to - 1].time;
        double part = gap > 0.0 ? (time - keys_[to - 1].time) / gap : 1.0;
        if (interpolation_ == Interpolation::kStep && part < 1.0) {
            part = 0.0;
        }
        return {&keys_[to - 1].value, &keys_[to].value, part, to};
    }

    Value between_keys(double time) const {
        const Span span = span_at(time);
        if (is_cubic() && span.to_key > 0) {
            return on_spline(span);
        }
        Value value;
        for (std::size_t i = 0; i < N; ++i) {
            value[i] = (*span.from)[i] * (1.0 - span.part) + (*span.to)[i] * span.part;
        }
        return value;
    }

    /// Narrows `valid`, in ticks of the host, to the range around `t` in which the value stays the
    /// same. Between neighbouring keys that are not equal, this is `t` alone.
    void narrow_to_rest(TimeValue t, double file_ticks_per_second, Interval& valid) const {
        if (keys_.size() == 1) {
            return;
        }
        const double time = t * file_ticks_per_second / TIME_TICKSPERSEC;
        const bool is_before = time < keys_.front().time;
        const bool is_behind = time >= keys_.back().time;
        std::size_t from = is_before ? 0 : is_behind ? keys_.size() - 1 : next_key(time) - 1;
        std::size_t to = is_before || keys_[from].time == time || is_behind ? from : from + 1;
        if (!rests_between(from, to) || (is_before && goes_on(before_first_)) ||
            (time > keys_.back().time && goes_on(behind_last_))) {
            valid &= Interval(t, t);
            return;
        }
        while (from > 0 && rests_between(from - 1, from)) {
            --from;
        }
        while (to + 1 < keys_.size() && rests_between(to, to + 1)) {
            ++to;
        }
        if (from > 0 || goes_on(before_first_)) {
            const double start =
                std::ceil(keys_[from].time * TIME_TICKSPERSEC / file_ticks_per_second);
            valid &= Interval(clamped(start, TIME_NegInfinity, t), TIME_PosInfinity);
        }
        if (to + 1 < keys_.size() || goes_on(behind_last_)) {
            const double stop =
                std::floor(keys_[to].time * TIME_TICKSPERSEC / file_ticks_per_second);
            valid &= Interval(TIME_NegInfinity, clamped(stop, t, TIME_PosInfinity));
        }
    }

private:
    struct Key {
        double time;
        Value value;
        Value in;
        Value out;
    };

    static bool is_finite(const Value& value) {
        return std::all_of(value.begin(), value.end(), [](double n) { return std::isfinite(n); });
    }

    // Whether the value stays the same between neighbouring keys.
    bool rests_between(std::size_t from, std::size_t to) const {
        return from == to ||
               (keys_[from].value == keys_[to].value &&
                (!is_cubic() || (keys_[from].out == Value{} && keys_[to].in == Value{})));
    }

    // Hermite's polynomials; the slopes count for the whole span.
    Value on_spline(const Span& span) const {
        const Key& from = keys_[span.to_key - 1];
        const Key& to = keys_[span.to_key];
        const double gap = to.time - from.time;
        const double t = span.part;
        const double rest = 1.0 - t;
        Value value;
        for (std::size_t i = 0; i < N; ++i) {
            value[i] = from.value[i] * (1.0 + 2.0 * t) * rest * rest +
                       from.out[i] * gap * t * rest * rest + to.value[i] * t * t * (3.0 - 2.0 * t) -
                       to.in[i] * gap * t * t * rest;
        }
        return value;
    }

    static bool goes_on(aiAnimBehaviour behaviour) {
        return behaviour == aiAnimBehaviour_REPEAT || behaviour == aiAnimBehaviour_LINEAR;
    }

    static TimeValue clamped(double ticks, TimeValue least, TimeValue most) {
        return static_cast<TimeValue>(std::clamp<double>(ticks, least, most));
    }

    // The first key after `time`, but at least the second key and at most the last.
    std::size_t next_key(double time) const {
        const auto next = std::upper_bound(keys_.begin() + 1, keys_.end() - 1, time,
                                           [](double t, const Key& key) { return t < key.time; });
        return static_cast<std::size_t>(next - keys_.begin());
    }

    std::vector<Key> keys_;  // ascending, at least one
    Interpolation interpolation_ = Interpolation::kLinear;
    aiAnimBehaviour before_first_ = aiAnimBehaviour_DEFAULT;
    aiAnimBehaviour behind_last_ = aiAnimBehaviour_DEFAULT;
};

}  // namespace vsqexport
