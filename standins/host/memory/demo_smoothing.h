#pragma once

#include "standins/host/memory/scene_builder.h"

namespace memhost {

/// Every way in which a mesh can define its normals.
void build_smoothing(SceneBuilder& scene);

}  // namespace memhost
