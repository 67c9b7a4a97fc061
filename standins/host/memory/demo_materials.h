#pragma once

#include "standins/host/memory/scene_builder.h"

namespace memhost {

/// Every kind of material: several classes with file maps and procedural maps, a multi-material,
/// and a node without a material.
void build_materials(SceneBuilder& scene);

}  // namespace memhost
