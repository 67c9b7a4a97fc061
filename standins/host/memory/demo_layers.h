#pragma once

#include "standins/host/memory/scene_builder.h"

namespace memhost {

/// Nodes on layers that cut across the tree. There are hidden nodes, a hidden layer and an empty
/// layer.
void build_layers(SceneBuilder& scene);

}  // namespace memhost
