#pragma once

#include <cstdint>
#include <vector>

namespace memhost {

/// A colour with eight bits per channel.
struct Pixel {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    std::uint8_t alpha = 255;

    bool operator==(const Pixel& other) const {
        return red == other.red && green == other.green && blue == other.blue &&
               alpha == other.alpha;
    }
};

/// Rows of pixels, from the top down.
struct Image {
    int width = 0;
    int height = 0;
    std::vector<Pixel> pixels;

    Image() = default;
    Image(int columns, int rows)
        : width(columns),
          height(rows),
          pixels(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows)) {}

    Pixel& at(int column, int row) { return pixels[place(column, row)]; }
    const Pixel& at(int column, int row) const { return pixels[place(column, row)]; }

private:
    std::size_t place(int column, int row) const {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(width) +
               static_cast<std::size_t>(column);
    }
};

}  // namespace memhost
