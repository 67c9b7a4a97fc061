#pragma once

#include <string>
#include <vector>

#include <assimp/scene.h>

#include "standins/host/import/held_objects.h"
#include "standins/host/import/node_index.h"

namespace memhost {

/// Adds a model's point lights to `held`, each with the node that it names. `warnings` gets a line
/// for each other kind of light.
void import_lights(const aiScene& model, const NodeIndex& nodes, HeldObjects& held,
                   std::vector<std::string>& warnings);

}  // namespace memhost
