#include "tools/vsqpicture/sky.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "tools/vsqinfo/display_text.h"
#include "tools/vsqinfo/input_file.h"

namespace vsqpicture {
namespace {

constexpr float kPi = 3.14159265f;

// Brightness of the even sky. Together these give the ground 1, faces to the front and left three
// quarters of that, and to the right and back half of it.
constexpr float kHorizon = 0.42f;
constexpr float kMoreAbove = 0.3f;
constexpr float kGround = 0.25f;
constexpr float kSpot = 2.2f;
constexpr Vec3 kSpotDirection{-0.4506f, -0.6008f, 0.6609f};
constexpr Vec3 kBackdrop{0.16f, 0.17f, 0.19f};

std::size_t pixel_at(float part, int size) {
    return static_cast<std::size_t>(
        std::clamp(static_cast<int>(part * static_cast<float>(size)), 0, size - 1));
}

}  // namespace

Sky Sky::even() {
    Sky sky;
    sky.is_even_ = true;
    return sky;
}

Sky Sky::of_file(const std::string& path, float brightness) {
    Sky sky;
    sky.brightness_ = brightness;
    try {
        std::ifstream stream = vsqinfo::open_input_file(path);
        sky.picture_ = decoded_light({std::istreambuf_iterator<char>(stream), {}});
    } catch (const std::exception& error) {
        throw std::runtime_error(vsqinfo::display_text(path) + ": " + error.what());
    }
    return sky;
}

Vec3 Sky::light(Vec3 direction) const {
    if (!picture_.pixels.empty()) {
        const float across = 0.5f + std::atan2(direction.x, direction.y) / (2 * kPi);
        const float down = std::acos(std::clamp(direction.z, -1.0f, 1.0f)) / kPi;
        const float* const rgb =
            &picture_.pixels[3 * (pixel_at(down, picture_.height) *
                                      static_cast<std::size_t>(picture_.width) +
                                  pixel_at(across, picture_.width))];
        return Vec3{rgb[0], rgb[1], rgb[2]} * brightness_;
    }
    if (!is_even_) {
        return {};
    }
    const float facing = std::max(0.0f, dot(direction, kSpotDirection));
    const float grey = direction.z >= 0
                           ? kHorizon + kMoreAbove * direction.z
                           : kHorizon + (kGround - kHorizon) * std::min(1.0f, -4 * direction.z);
    return Vec3{1, 1, 1} * (grey + kSpot * std::pow(facing, 6.0f));
}

Vec3 Sky::seen(Vec3 direction) const {
    return is_even_ ? kBackdrop * (1 + 0.5f * direction.z) : light(direction);
}

}  // namespace vsqpicture
