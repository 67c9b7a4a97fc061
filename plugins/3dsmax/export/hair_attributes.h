#pragma once

#include <optional>

#include "plugins/3dsmax/export/host.h"

/// How strands look from root to tip. As it is made, it is that of curves which aren't hair.
struct StrandLook {
    float start_radius = 1.0f;  ///< a factor on the radius of the whole object
    float end_radius = 1.0f;
    Color root_color{0.8f, 0.8f, 0.8f};
    Color tip_color{0.8f, 0.8f, 0.8f};
    float hue = 10.0f;  ///< in percent, as is `value`: how far strands differ
    float value = 50.0f;
};

/// What `HairScript` stored with the splines that it made, as it is at `time`; none if `object`
/// isn't made of hair.
std::optional<StrandLook> find_hair_attributes(Object* object, TimeValue time);
