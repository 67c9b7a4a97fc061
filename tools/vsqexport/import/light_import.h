#pragma once

#include <string>
#include <vector>

#include <assimp/scene.h>

#include "tools/vsqexport/import/held_objects.h"
#include "tools/vsqexport/import/import_warning.h"
#include "tools/vsqexport/import/node_index.h"

namespace vsqexport {

/// Adds a model's point lights to `held`, each under the node that it names. `warnings` gets a line
/// for each reason why other lights are left out, such as their kind.
void import_lights(const aiScene& model, const NodeIndex& nodes, HeldObjects& held,
                   ImportWarnings& warnings);

}  // namespace vsqexport
