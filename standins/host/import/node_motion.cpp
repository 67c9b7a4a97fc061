#include "standins/host/import/node_motion.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace memhost {
namespace {

using Vector = std::array<double, 3>;
using Quaternion = std::array<double, 4>;

Vector to_vector(const aiVector3D& v) {
    return {v.x, v.y, v.z};
}

Quaternion to_quaternion(const aiQuaternion& q) {
    return {q.w, q.x, q.y, q.z};
}

double dot(const Quaternion& a, const Quaternion& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2] + a[3] * b[3];
}

// One without a length turns nothing.
Quaternion normalized(const Quaternion& q) {
    const double length = std::sqrt(dot(q, q));
    if (length == 0.0) {
        return {1, 0, 0, 0};
    }
    return {q[0] / length, q[1] / length, q[2] / length, q[3] / length};
}

template <std::size_t N>
std::array<double, N> weighted_sum(const std::array<double, N>& a, double weight_a,
                                   const std::array<double, N>& b, double weight_b) {
    std::array<double, N> sum;
    for (std::size_t i = 0; i < N; ++i) {
        sum[i] = a[i] * weight_a + b[i] * weight_b;
    }
    return sum;
}

Quaternion between(const Quaternion& a, const Quaternion& b, double part) {
    constexpr double kNoArc = 1e-9;  // of the cosine: the two are as good as parallel
    const double cosine = dot(a, b);
    if (1.0 - cosine < kNoArc) {
        return normalized(weighted_sum(a, 1.0 - part, b, part));
    }
    const double angle = std::acos(cosine);
    const double sine = std::sin(angle);
    return normalized(
        weighted_sum(a, std::sin((1.0 - part) * angle) / sine, b, std::sin(part * angle) / sine));
}

template <std::size_t N>
bool is_finite(const std::array<double, N>& value) {
    return std::all_of(value.begin(), value.end(), [](double n) { return std::isfinite(n); });
}

// A motion that goes on for long can leave what a float holds.
float narrow(double number) {
    constexpr double kMost = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(number, -kMost, kMost));
}

template <typename Keys>
bool holds_one_value(const Keys& track) {
    return std::all_of(track.begin(), track.end(),
                       [&track](const auto& key) { return key.value == track.front().value; });
}

// What the node's own matrix says of its components, where it says it.
struct Rest {
    explicit Rest(const aiMatrix4x4& matrix) {
        aiVector3D matrix_scale;
        aiQuaternion matrix_rotation;
        aiVector3D matrix_position;
        matrix.Decompose(matrix_scale, matrix_rotation, matrix_position);
        if (is_finite(to_vector(matrix_scale))) {
            scale = to_vector(matrix_scale);
        }
        if (is_finite(to_quaternion(matrix_rotation))) {
            rotation = to_quaternion(matrix_rotation);
        }
        if (is_finite(to_vector(matrix_position))) {
            position = to_vector(matrix_position);
        }
    }

    Vector scale = {1, 1, 1};
    Quaternion rotation = {1, 0, 0, 0};
    Vector position = {0, 0, 0};
};

}  // namespace

template <std::size_t N>
void NodeMotion::add_key(Track<N>& track, const Key<N>& key) {
    if (std::isfinite(key.time) && is_finite(key.value)) {
        track.push_back(key);
    } else {
        ++dropped_keys_;
    }
}

template <std::size_t N>
void NodeMotion::finish(Track<N>& track, const std::array<double, N>& rest) {
    if (track.empty()) {
        track.push_back({0.0, rest});
    }
    std::stable_sort(track.begin(), track.end(),
                     [](const Key<N>& a, const Key<N>& b) { return a.time < b.time; });
}

NodeMotion::NodeMotion(const aiNodeAnim& channel, const aiMatrix4x4& rest_matrix,
                       double file_ticks_per_second)
    : file_ticks_per_second_(file_ticks_per_second),
      before_first_(channel.mPreState),
      behind_last_(channel.mPostState) {
    for (unsigned i = 0; i < channel.mNumPositionKeys; ++i) {
        const aiVectorKey& key = channel.mPositionKeys[i];
        add_key<3>(positions_, {key.mTime, to_vector(key.mValue)});
    }
    for (unsigned i = 0; i < channel.mNumRotationKeys; ++i) {
        const aiQuatKey& key = channel.mRotationKeys[i];
        add_key<4>(rotations_, {key.mTime, normalized(to_quaternion(key.mValue))});
    }
    for (unsigned i = 0; i < channel.mNumScalingKeys; ++i) {
        const aiVectorKey& key = channel.mScalingKeys[i];
        add_key<3>(scales_, {key.mTime, to_vector(key.mValue)});
    }
    const Rest rest(rest_matrix);
    finish<3>(positions_, rest.position);
    finish<4>(rotations_, rest.rotation);
    finish<3>(scales_, rest.scale);

    // Of the two signs that a rotation can have, the one that is nearer to the key before.
    for (std::size_t i = 1; i < rotations_.size(); ++i) {
        if (dot(rotations_[i - 1].value, rotations_[i].value) < 0.0) {
            for (double& component : rotations_[i].value) {
                component = 0.0 - component;
            }
        }
    }
}

bool NodeMotion::is_still() const {
    return holds_one_value(positions_) && holds_one_value(rotations_) && holds_one_value(scales_);
}

double NodeMotion::end_seconds() const {
    return std::max({positions_.back().time, rotations_.back().time, scales_.back().time}) /
           file_ticks_per_second_;
}

template <std::size_t N>
NodeMotion::Span NodeMotion::span_at(const Track<N>& track, double time) const {
    const double first = track.front().time;
    const double last = track.back().time;
    if (time < first || time > last || first == last) {
        const std::size_t nearest = time < first ? 0 : track.size() - 1;
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
    const auto next = std::upper_bound(track.begin() + 1, track.end() - 1, time,
                                       [](double t, const Key<N>& key) { return t < key.time; });
    const std::size_t to = static_cast<std::size_t>(next - track.begin());
    const double gap = track[to].time - track[to - 1].time;
    return {to - 1, to, gap > 0.0 ? (time - track[to - 1].time) / gap : 1.0};
}

std::array<double, 3> NodeMotion::vector_at(const Track<3>& track, double time) const {
    const Span span = span_at(track, time);
    return weighted_sum(track[span.from].value, 1.0 - span.part, track[span.to].value, span.part);
}

std::array<double, 4> NodeMotion::rotation_at(double time) const {
    const Span span = span_at(rotations_, time);
    return between(rotations_[span.from].value, rotations_[span.to].value, span.part);
}

Matrix3 NodeMotion::at(TimeValue t) const {
    const double time = t * file_ticks_per_second_ / TIME_TICKSPERSEC;
    const auto [w, x, y, z] = rotation_at(time);
    const Vector turned_axes[3] = {
        {1.0 - 2.0 * (y * y + z * z), 2.0 * (x * y + z * w), 2.0 * (x * z - y * w)},
        {2.0 * (x * y - z * w), 1.0 - 2.0 * (x * x + z * z), 2.0 * (y * z + x * w)},
        {2.0 * (x * z + y * w), 2.0 * (y * z - x * w), 1.0 - 2.0 * (x * x + y * y)},
    };
    const Vector scale = vector_at(scales_, time);
    const Vector position = vector_at(positions_, time);

    Matrix3 matrix;
    for (int row = 0; row < 3; ++row) {
        const Vector& axis = turned_axes[row];
        const double length = scale[static_cast<std::size_t>(row)];
        matrix.SetRow(
            row, {narrow(axis[0] * length), narrow(axis[1] * length), narrow(axis[2] * length)});
    }
    matrix.SetRow(3, {narrow(position[0]), narrow(position[1]), narrow(position[2])});
    return matrix;
}

}  // namespace memhost
