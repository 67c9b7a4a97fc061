#include "tools/vsqexport/import/texture_picture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace vsqexport {
namespace {

using memhost::Image;
using memhost::Pixel;

std::uint8_t byte_of(float value) {
    return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0f, 1.0f) * 255));
}

// Between the numbers of an image file and linear light, as sRGB has it.
float linear_of(float value) {
    return value <= 0.04045f ? value / 12.92f : std::pow((value + 0.055f) / 1.055f, 2.4f);
}

float coded_of(float light) {
    return light <= 0.0031308f ? light * 12.92f : 1.055f * std::pow(light, 1 / 2.4f) - 0.055f;
}

// What becomes of each number of a channel.
std::array<std::uint8_t, 256> multiplied(float factor) {
    std::array<std::uint8_t, 256> numbers{};
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        numbers[i] = byte_of(coded_of(linear_of(static_cast<float>(i) / 255) * factor));
    }
    return numbers;
}

// The mean of what `convert` makes of the numbers of each channel.
template <typename Convert>
Color mean_of(const Image& image, const Convert& convert) {
    std::array<double, 256> values{};
    for (std::size_t i = 0; i < values.size(); ++i) {
        values[i] = convert(static_cast<float>(i) / 255);
    }
    double red = 0, green = 0, blue = 0;
    for (const Pixel& pixel : image.pixels) {
        red += values[pixel.red];
        green += values[pixel.green];
        blue += values[pixel.blue];
    }
    const double count = static_cast<double>(std::max<std::size_t>(image.pixels.size(), 1));
    return {static_cast<float>(red / count), static_cast<float>(green / count),
            static_cast<float>(blue / count)};
}

float brightness(const Pixel& pixel) {
    return (0.2126f * pixel.red + 0.7152f * pixel.green + 0.0722f * pixel.blue) / 255;
}

}  // namespace

bool has_alpha(const Image& image) {
    return std::any_of(image.pixels.begin(), image.pixels.end(),
                       [](const Pixel& pixel) { return pixel.alpha < 255; });
}

bool shows_normals(const Image& image) {
    const Color mean = mean_color(image);
    const auto is_middle = [](float value) { return value > 0.4f && value < 0.6f; };
    return is_middle(mean.r) && is_middle(mean.g) && mean.b > 0.7f;
}

Color mean_color(const Image& image) {
    return mean_of(image, [](float value) { return value; });
}

Color mean_light(const Image& image) {
    return mean_of(image, linear_of);
}

Image opacity_picture(const Image& image, bool takes_alpha, float opacity, float cutoff) {
    Image greys = image;
    for (Pixel& pixel : greys.pixels) {
        float value = takes_alpha ? static_cast<float>(pixel.alpha) / 255 : brightness(pixel);
        value *= opacity;
        if (cutoff >= 0) {
            value = value >= cutoff ? 1.0f : 0.0f;
        }
        const std::uint8_t grey = byte_of(value);
        pixel = {grey, grey, grey, 255};
    }
    return greys;
}

Image tinted(const Image& image, const Color& factor) {
    const auto reds = multiplied(factor.r);
    const auto greens = multiplied(factor.g);
    const auto blues = multiplied(factor.b);
    Image result = image;
    for (Pixel& pixel : result.pixels) {
        pixel.red = reds[pixel.red];
        pixel.green = greens[pixel.green];
        pixel.blue = blues[pixel.blue];
    }
    return result;
}

}  // namespace vsqexport
