#pragma once

#include <string>

#include "tools/vsqpicture/image.h"
#include "tools/vsqpicture/vectors.h"

namespace vsqpicture {

/// Light that comes from all directions.
class Sky {
public:
    /// No light.
    Sky() = default;

    /// Grey, darker below, with a wide bright spot above the front and the left, so that the faces
    /// of a box differ. White things that lie under it are white.
    static Sky even();

    /// A picture around the scene: its middle column is ahead, along y, and its upper edge above.
    /// `brightness` is what white sends, in candela per square metre. Throws `std::runtime_error`
    /// with one line if the file can't be read.
    static Sky of_file(const std::string& path, float brightness);

    Vec3 light(Vec3 direction) const;

    /// What is seen where nothing is. Of the even sky it is darker than its light, so that white
    /// things can be told from it.
    Vec3 seen(Vec3 direction) const;

private:
    bool is_even_ = false;
    float brightness_ = 0;
    LightImage picture_;
};

}  // namespace vsqpicture
