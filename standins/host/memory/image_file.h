#pragma once

#include <optional>
#include <string>
#include <vector>

#include "standins/host/memory/image.h"

namespace memhost {

struct ImageSize {
    int width = 0;
    int height = 0;
};

/// Reads only the start of the file. 0 by 0 for a format that the host knows but that can't be
/// decoded here. `nullopt` if the file doesn't exist or isn't an image. The path is host text.
std::optional<ImageSize> read_image_size(const std::wstring& path);

/// The size of an image file with these bytes, as `read_image_size` gives it.
std::optional<ImageSize> image_size(const std::vector<unsigned char>& bytes);

/// `nullopt` if the bytes aren't an image that can be decoded.
std::optional<Image> decode_image(const std::vector<unsigned char>& bytes);

std::optional<Image> read_image(const std::wstring& path);

/// The bytes of a PNG file; empty if the image can't be encoded.
std::string png_bytes(const Image& image);

bool write_png(const std::wstring& path, const Image& image);

}  // namespace memhost
