#pragma once

#include "standins/host/memory/scene_builder.h"

namespace memhost {

/// A small set under two lamps: textures, a shiny ball, a ball that hops, and a camera that
/// circles.
void build_studio(SceneBuilder& scene);

}  // namespace memhost
