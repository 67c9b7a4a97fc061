#pragma once

#include "standins/host/memory/scene_builder.h"

namespace memhost {

/// Cameras that stand, ride, clip and show without perspective, some with a target.
void build_cameras(SceneBuilder& scene);

}  // namespace memhost
