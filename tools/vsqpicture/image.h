#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vsqpicture {

/// A picture of 8 bits for red, green, blue and alpha, top row first.
struct Image {
    Image(int width_, int height_)
        : width(width_),
          height(height_),
          pixels(4 * static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_)) {}

    std::uint8_t* at(int x, int y) {
        return &pixels[4 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                            static_cast<std::size_t>(x))];
    }
    const std::uint8_t* at(int x, int y) const { return const_cast<Image*>(this)->at(x, y); }

    int width;
    int height;
    std::vector<std::uint8_t> pixels;
};

/// Copies `part` to a place of `whole`; what lies outside is left out.
void paste(Image& whole, const Image& part, int left, int top);

/// Writes a line of 7-bit text in black or, on dark pictures, white; 7 pixels high at `scale` 1.
void write_text(Image& image, int left, int top, const std::string& text, bool white,
                int scale = 1);

/// Writes a PNG. Throws `std::runtime_error` with one line if the file can't be written; nothing is
/// then left of it. `path` is UTF-8.
void write_png(const Image& image, const std::string& path);

/// The image in the bytes of a file, of any kind that stb knows. Throws `std::runtime_error` with
/// the reason.
Image decoded_image(const std::string& bytes);

/// A picture of linear light: red, green and blue, top row first.
struct LightImage {
    int width = 0;
    int height = 0;
    std::vector<float> pixels;
};

/// The same for a picture of light, which may be brighter than white.
LightImage decoded_light(const std::string& bytes);

}  // namespace vsqpicture
