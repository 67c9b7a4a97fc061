#pragma once

#include <string>

#include "tools/vsqpicture/image.h"
#include "tools/vsqpicture/vectors.h"

namespace vsqpicture {

/// A texture file in memory, which repeats in both directions. The image's lower left corner is at
/// u = 0, v = 0.
class Texture {
public:
    struct Sample {
        Vec3 colour;  ///< linear
        float alpha;
    };

    /// What the bytes of an image mean.
    enum class Bytes {
        kColours,  ///< sRGB
        kNumbers,  ///< from 0 to 1, such as heights
    };

    /// Reads an image of any kind that stb knows, from the path by which a scene names it. Without
    /// such a file it is a magenta and black checker.
    explicit Texture(const std::string& path);

    /// Why there is a checker, in one line; otherwise empty.
    const std::string& failure() const { return failure_; }

    /// The colour between the four nearest pixels.
    Sample at(float u, float v, Bytes bytes = Bytes::kColours) const;

private:
    Sample pixel(int x, int y, Bytes bytes) const;

    Image image_{1, 1};
    std::string failure_;
};

}  // namespace vsqpicture
