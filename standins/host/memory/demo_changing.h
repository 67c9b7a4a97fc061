#pragma once

#include "standins/host/memory/scene_builder.h"

namespace memhost {

/// One of each kind of thing that can change with time besides a node's matrix.
void build_changing(SceneBuilder& scene);

}  // namespace memhost
