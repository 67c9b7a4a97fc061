#pragma once

#include "standins/host/memory/scene_builder.h"

namespace memhost {

/// Still, moving, clipping and orthographic cameras, some of them with a target.
void build_cameras(SceneBuilder& scene);

}  // namespace memhost
