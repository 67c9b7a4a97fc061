#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include <assimp/texture.h>

#include "standins/host/memory/image.h"
#include "standins/host/memory/image_file.h"

namespace vsqexport {

/// The bytes of the image file that a texture of height 0 holds. Its width is their number.
inline std::string_view file_bytes(const aiTexture& texture) {
    return {reinterpret_cast<const char*>(texture.pcData), texture.mWidth};
}

/// The pixels of a texture with a height.
inline memhost::Image raw_image(const aiTexture& texture) {
    memhost::Image image(static_cast<int>(texture.mWidth), static_cast<int>(texture.mHeight));
    for (std::size_t i = 0; i < image.pixels.size(); ++i) {
        const aiTexel& texel = texture.pcData[i];
        image.pixels[i] = {texel.r, texel.g, texel.b, texel.a};
    }
    return image;
}

/// Whether the host can read the texture.
inline bool is_image(const aiTexture& texture) {
    const std::string_view bytes = texture.mHeight > 0 ? std::string_view() : file_bytes(texture);
    return texture.mHeight > 0 || memhost::image_size({bytes.begin(), bytes.end()}).has_value();
}

/// A texture that outlives its model. The bytes of an image file are decoded only when asked for.
class TextureCopy {
public:
    explicit TextureCopy(const aiTexture& texture) {
        if (texture.mHeight > 0) {
            raw_ = raw_image(texture);
        } else {
            const std::string_view bytes = file_bytes(texture);
            bytes_.assign(bytes.begin(), bytes.end());
        }
    }

    std::optional<memhost::Image> image() const {
        return bytes_.empty() ? raw_ : memhost::decode_image(bytes_);
    }

private:
    std::vector<unsigned char> bytes_;
    memhost::Image raw_;
};

}  // namespace vsqexport
