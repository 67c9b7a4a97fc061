#pragma once

#include "standins/host/memory/scene_builder.h"

namespace memhost {

/// Meshes whose vertices move, or whose triangles change on the way.
void build_deforming(SceneBuilder& scene);

}  // namespace memhost
