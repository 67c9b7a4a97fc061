#pragma once

#include "standins/host/memory/scene_builder.h"

namespace memhost {

/// Nodes on several layers, across the tree: hidden ones, a hidden layer and an empty one.
void build_layers(SceneBuilder& scene);

}  // namespace memhost
