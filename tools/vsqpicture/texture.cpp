#include "tools/vsqpicture/texture.h"

#include <array>
#include <cmath>
#include <fstream>
#include <iterator>

#include "tools/vsqinfo/display_text.h"
#include "tools/vsqinfo/input_file.h"

namespace vsqpicture {
namespace {

// A loud pattern, so that nobody takes it for a material.
const std::vector<std::uint8_t> kChecker = {255, 0, 255, 255, 0,   0, 0,   255,
                                            0,   0, 0,   255, 255, 0, 255, 255};

// Linear values of sRGB bytes.
const std::array<float, 256>& linear_values() {
    static const std::array<float, 256> values = [] {
        std::array<float, 256> table;
        for (std::size_t i = 0; i < table.size(); ++i) {
            const double value = static_cast<double>(i) / 255;
            table[i] = static_cast<float>(
                value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4));
        }
        return table;
    }();
    return values;
}

const std::array<float, 256>& plain_values() {
    static const std::array<float, 256> values = [] {
        std::array<float, 256> table;
        for (std::size_t i = 0; i < table.size(); ++i) {
            table[i] = static_cast<float>(i) / 255;
        }
        return table;
    }();
    return values;
}

int wrapped(int place, int size) {
    const int rest = place % size;
    return rest < 0 ? rest + size : rest;
}

}  // namespace

Texture::Texture(const std::string& path) {
    try {
        std::ifstream stream = vsqinfo::open_input_file(path);
        const std::string bytes(std::istreambuf_iterator<char>(stream), {});
        image_ = decoded_image(bytes);
        return;
    } catch (const std::exception& error) {
        failure_ = error.what();
    }
    failure_ = vsqinfo::display_text(path) + ": " + failure_;
    image_ = Image(2, 2);
    image_.pixels = kChecker;
}

Texture::Sample Texture::pixel(int x, int y, Bytes bytes) const {
    const std::array<float, 256>& linear =
        bytes == Bytes::kNumbers ? plain_values() : linear_values();
    const std::uint8_t* const rgba = image_.at(x, y);
    return {{linear[rgba[0]], linear[rgba[1]], linear[rgba[2]]}, static_cast<float>(rgba[3]) / 255};
}

Texture::Sample Texture::at(float u, float v, Bytes bytes) const {
    const float repeated_u = u - std::floor(u);
    const float repeated_v = v - std::floor(v);
    if (!(repeated_u >= 0 && repeated_u <= 1 && repeated_v >= 0 && repeated_v <= 1)) {
        return {{}, 1};  // NaN or infinite
    }
    const float x = repeated_u * static_cast<float>(image_.width) - 0.5f;
    const float y = (1 - repeated_v) * static_cast<float>(image_.height) - 0.5f;
    if (!failure_.empty()) {
        return pixel(repeated_u < 0.5f ? 0 : 1, repeated_v < 0.5f ? 0 : 1, bytes);
    }
    const int left = static_cast<int>(std::floor(x));
    const int top = static_cast<int>(std::floor(y));
    const float right_part = x - static_cast<float>(left);
    const float lower_part = y - static_cast<float>(top);
    Sample sum{{}, 0};
    for (int dy = 0; dy < 2; ++dy) {
        for (int dx = 0; dx < 2; ++dx) {
            const Sample corner =
                pixel(wrapped(left + dx, image_.width), wrapped(top + dy, image_.height), bytes);
            const float weight =
                (dx ? right_part : 1 - right_part) * (dy ? lower_part : 1 - lower_part);
            sum.colour += corner.colour * weight;
            sum.alpha += corner.alpha * weight;
        }
    }
    return sum;
}

}  // namespace vsqpicture
