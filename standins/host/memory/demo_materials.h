#pragma once

#include "standins/host/memory/scene_builder.h"

namespace memhost {

/// Every kind of material: with maps that are files and maps that are drawn, of several classes,
/// put together to one, and none at all.
void build_materials(SceneBuilder& scene);

}  // namespace memhost
