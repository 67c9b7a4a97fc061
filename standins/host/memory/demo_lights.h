#pragma once

#include "standins/host/memory/scene_builder.h"

namespace memhost {

/// Every kind of light that is exported, and some that aren't. Two of them use files of the samples
/// folder, which are found only if that folder is in the current one.
void build_lights(SceneBuilder& scene);

}  // namespace memhost
