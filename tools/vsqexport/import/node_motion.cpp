#include "tools/vsqexport/import/node_motion.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vsqexport {
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

// A quaternion of length 0 becomes no rotation.
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
    constexpr double kNoArc = 1e-9;  // of the cosine; below this the two are practically parallel
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

// A motion that is extrapolated for long can leave the range of a float.
float narrow(double number) {
    constexpr double kMost = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(number, -kMost, kMost));
}

// The components of the node's own matrix; defaults for those that aren't finite.
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

// Files have x, y, z and w, a quaternion here has w first.
template <std::size_t N>
std::array<double, N> slope_per_tick(const std::array<double, 4>& per_second,
                                     double ticks_per_second) {
    std::array<double, N> slope;
    for (std::size_t i = 0; i < N; ++i) {
        slope[i] = per_second[N == 4 ? (i + 3) % 4 : i] / ticks_per_second;
    }
    return slope;
}

// Adds all keys of a component and returns how many were dropped.
template <std::size_t N, typename Key, typename Convert>
int add_keys(KeyTrack<N>& track, const Key* keys, unsigned count, const GltfCurve* curve,
             double ticks_per_second, const Convert& convert) {
    using Value = std::array<double, N>;
    const bool is_cubic = curve && curve->interpolation == Interpolation::kCubic;
    if (curve && (!is_cubic || curve->slopes.size() == count)) {
        track.interpolate(curve->interpolation);
    }
    int dropped = 0;
    for (unsigned i = 0; i < count; ++i) {
        Value in{}, out{};
        if (track.is_cubic()) {
            in = slope_per_tick<N>(curve->slopes[i].in, ticks_per_second);
            out = slope_per_tick<N>(curve->slopes[i].out, ticks_per_second);
        }
        dropped += !track.add(keys[i].mTime, convert(keys[i].mValue), in, out);
    }
    return dropped;
}

}  // namespace

NodeMotion::NodeMotion(const aiNodeAnim& channel, const aiMatrix4x4& rest_matrix,
                       double file_ticks_per_second, const ChannelCurves& curves)
    : file_ticks_per_second_(file_ticks_per_second) {
    const auto to_rotation = [](const aiQuaternion& q) { return normalized(to_quaternion(q)); };
    dropped_keys_ = add_keys(positions_, channel.mPositionKeys, channel.mNumPositionKeys,
                             curves.position, file_ticks_per_second, to_vector) +
                    add_keys(rotations_, channel.mRotationKeys, channel.mNumRotationKeys,
                             curves.rotation, file_ticks_per_second, to_rotation) +
                    add_keys(scales_, channel.mScalingKeys, channel.mNumScalingKeys, curves.scale,
                             file_ticks_per_second, to_vector);
    const Rest rest(rest_matrix);
    positions_.finish(rest.position, channel.mPreState, channel.mPostState);
    rotations_.finish(rest.rotation, channel.mPreState, channel.mPostState);
    scales_.finish(rest.scale, channel.mPreState, channel.mPostState);

    // A quaternion and its negative are the same rotation; take the one nearer to the previous key.
    // The slopes of a spline belong to the one in the file.
    if (rotations_.is_cubic()) {
        return;
    }
    rotations_.for_each_pair([](const Quaternion& before, Quaternion& rotation) {
        if (dot(before, rotation) < 0.0) {
            for (double& component : rotation) {
                component = 0.0 - component;
            }
        }
    });
}

bool NodeMotion::is_still() const {
    return positions_.is_still() && rotations_.is_still() && scales_.is_still();
}

double NodeMotion::end_seconds() const {
    return std::max({positions_.end(), rotations_.end(), scales_.end()}) / file_ticks_per_second_;
}

void NodeMotion::narrow_to_rest(TimeValue t, Interval& valid) const {
    positions_.narrow_to_rest(t, file_ticks_per_second_, valid);
    rotations_.narrow_to_rest(t, file_ticks_per_second_, valid);
    scales_.narrow_to_rest(t, file_ticks_per_second_, valid);
}

Matrix3 NodeMotion::at(TimeValue t) const {
    const double time = t * file_ticks_per_second_ / TIME_TICKSPERSEC;
    const auto turn = rotations_.span_at(time);
    const auto [w, x, y, z] = rotations_.is_cubic() ? normalized(rotations_.between_keys(time))
                                                    : between(*turn.from, *turn.to, turn.part);
    const Vector turned_axes[3] = {
        {1.0 - 2.0 * (y * y + z * z), 2.0 * (x * y + z * w), 2.0 * (x * z - y * w)},
        {2.0 * (x * y - z * w), 1.0 - 2.0 * (x * x + z * z), 2.0 * (y * z + x * w)},
        {2.0 * (x * z + y * w), 2.0 * (y * z - x * w), 1.0 - 2.0 * (x * x + y * y)},
    };
    const Vector scale = scales_.between_keys(time);
    const Vector position = positions_.between_keys(time);

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

}  // namespace vsqexport
