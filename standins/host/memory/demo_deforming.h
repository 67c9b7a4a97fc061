#pragma once

#include "standins/host/memory/scene_builder.h"

namespace memhost {

/// Meshes whose vertices move, and one whose triangles change during the animation.
void build_deforming(SceneBuilder& scene);

}  // namespace memhost
