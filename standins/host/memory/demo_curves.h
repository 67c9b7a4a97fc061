#pragma once

#include "standins/host/memory/scene_builder.h"

namespace memhost {

/// Shapes, some of which aren't rendered.
void build_curves(SceneBuilder& scene);

/// Curved and straight hair, and hair on a node without a name.
void build_hair(SceneBuilder& scene);

}  // namespace memhost
