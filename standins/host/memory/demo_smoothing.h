#pragma once

#include "standins/host/memory/scene_builder.h"

namespace memhost {

/// Every way in which a mesh says what its normals are.
void build_smoothing(SceneBuilder& scene);

}  // namespace memhost
