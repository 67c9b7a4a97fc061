#pragma once

#include <optional>

#include "plugins/3dsmax/export/host.h"

/// How strands look from root to tip. The defaults are for curves that aren't hair.
struct StrandLook {
    float start_radius = 1.0f;  ///< a factor on the radius of the whole object
    float end_radius = 1.0f;
    Color root_color{0.8f, 0.8f, 0.8f};
    Color tip_color{0.8f, 0.8f, 0.8f};
    float hue = 10.0f;  ///< variation between strands, in percent; so is `value`
    float value = 50.0f;
};

/// The values at `time` that `HairScript` stored with the splines it made. No value if `object`
/// isn't made of hair.
std::optional<StrandLook> find_hair_attributes(Object* object, TimeValue time);
