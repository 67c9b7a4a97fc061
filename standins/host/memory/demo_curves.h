#pragma once

#include "standins/host/memory/scene_builder.h"

namespace memhost {

/// Shapes, those that are rendered and those that aren't.
void build_curves(SceneBuilder& scene);

/// Hair of two kinds, and on something without a name.
void build_hair(SceneBuilder& scene);

}  // namespace memhost
