#include "tools/vsqpicture/image.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <system_error>

#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STB_IMAGE_WRITE_STATIC
#include <stb/stb_image_write.h>
#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#include <stb/stb_easy_font.h>
#include <stb/stb_image.h>

namespace vsqpicture {
namespace {

void append_bytes(void* target, void* data, int size) {
    static_cast<std::string*>(target)->append(static_cast<char*>(data),
                                              static_cast<std::size_t>(size));
}

}  // namespace

void paste(Image& whole, const Image& part, int left, int top) {
    for (int y = 0; y < part.height && top + y < whole.height; ++y) {
        const int width = std::min(part.width, whole.width - left);
        if (width > 0) {
            std::memcpy(whole.at(left, top + y), part.at(0, y),
                        4 * static_cast<std::size_t>(width));
        }
    }
}

void write_text(Image& image, int left, int top, const std::string& text, bool white, int scale) {
    // The font comes as rectangles of four corners with three floats and a colour each.
    struct Corner {
        float x, y, z;
        std::uint8_t colour[4];
    };
    std::vector<Corner> corners(4 * 70 * (text.size() + 1));
    // The font has no other characters and would read past its table.
    std::string shown = text;
    std::replace_if(
        shown.begin(), shown.end(), [](char c) { return c < ' ' || c > '~'; }, '?');
    const int rectangles = stb_easy_font_print(0, 0, &shown[0], nullptr, corners.data(),
                                               static_cast<int>(corners.size() * sizeof(Corner)));
    for (int i = 0; i < rectangles; ++i) {
        const Corner* const corner = &corners[4 * static_cast<std::size_t>(i)];
        for (int y = static_cast<int>(corner[0].y) * scale;
             y < static_cast<int>(corner[2].y) * scale; ++y) {
            for (int x = static_cast<int>(corner[0].x) * scale;
                 x < static_cast<int>(corner[2].x) * scale; ++x) {
                if (left + x >= 0 && left + x < image.width && top + y >= 0 &&
                    top + y < image.height) {
                    std::uint8_t* const pixel = image.at(left + x, top + y);
                    std::fill_n(pixel, 3, static_cast<std::uint8_t>(white ? 255 : 0));
                    pixel[3] = 255;
                }
            }
        }
    }
}

void write_png(const Image& image, const std::string& path) {
    std::string bytes;
    if (!stbi_write_png_to_func(append_bytes, &bytes, image.width, image.height, 4,
                                image.pixels.data(), 4 * image.width)) {
        throw std::runtime_error(path + ": the picture can't be made");
    }
    const std::filesystem::path file = std::filesystem::u8path(path);
    std::error_code ignored;
    const bool existed = std::filesystem::exists(file, ignored);
    std::ofstream stream(file, std::ios::binary);
    const bool is_open = stream.is_open();
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    if (!stream) {
        if (is_open && !existed) {
            std::filesystem::remove(file, ignored);
        }
        throw std::runtime_error(path + ": the picture can't be written");
    }
}

Image decoded_image(const std::string& bytes) {
    int width = 0, height = 0, channels = 0;
    const std::unique_ptr<stbi_uc, void (*)(void*)> pixels(
        stbi_load_from_memory(reinterpret_cast<const stbi_uc*>(bytes.data()),
                              static_cast<int>(bytes.size()), &width, &height, &channels, 4),
        stbi_image_free);
    if (!pixels) {
        throw std::runtime_error(std::string("can't be read as an image: ") +
                                 stbi_failure_reason());
    }
    Image image(width, height);
    std::copy_n(pixels.get(), image.pixels.size(), image.pixels.begin());
    return image;
}

LightImage decoded_light(const std::string& bytes) {
    LightImage image;
    int channels = 0;
    const std::unique_ptr<float, void (*)(void*)> pixels(
        stbi_loadf_from_memory(reinterpret_cast<const stbi_uc*>(bytes.data()),
                               static_cast<int>(bytes.size()), &image.width, &image.height,
                               &channels, 3),
        stbi_image_free);
    if (!pixels) {
        throw std::runtime_error(std::string("can't be read as an image: ") +
                                 stbi_failure_reason());
    }
    image.pixels.assign(pixels.get(), pixels.get() + 3 * static_cast<std::size_t>(image.width) *
                                                         static_cast<std::size_t>(image.height));
    return image;
}

}  // namespace vsqpicture
