#pragma once

#include "standins/host/memory/scene_builder.h"

namespace memhost {

/// Every kind of light that an export takes along, and some that it leaves out. Two of them name
/// files of the samples folder, which are found if that is in the current folder.
void build_lights(SceneBuilder& scene);

}  // namespace memhost
