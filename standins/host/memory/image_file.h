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

/// Of the image in a file, by its head alone: 0 by 0 for a kind that the host knows and this one
/// can't decode. Nothing if there is no such file or it holds no image. The path is host text.
std::optional<ImageSize> read_image_size(const std::wstring& path);

/// Of the image in the bytes of a file.
std::optional<ImageSize> image_size(const std::vector<unsigned char>& bytes);

/// Nothing if the bytes are no image of a kind that can be decoded.
std::optional<Image> decode_image(const std::vector<unsigned char>& bytes);

std::optional<Image> read_image(const std::wstring& path);

bool write_png(const std::wstring& path, const Image& image);

}  // namespace memhost
