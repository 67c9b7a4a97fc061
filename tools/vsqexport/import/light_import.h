#pragma once

#include <string>
#include <vector>

#include <assimp/scene.h>

#include "tools/vsqexport/import/held_objects.h"
#include "tools/vsqexport/import/node_index.h"

namespace vsqexport {

/// Adds a model's point lights to `held`, each with the node that it names. `warnings` gets a line
/// for each other kind of light.
void import_lights(const aiScene& model, const NodeIndex& nodes, HeldObjects& held,
                   std::vector<std::string>& warnings);

}  // namespace vsqexport
