#pragma once

#include <string>
#include <vector>

#include <assimp/scene.h>

#include "tools/vsqexport/import/collada_text.h"
#include "tools/vsqexport/import/held_objects.h"
#include "tools/vsqexport/import/import_warning.h"
#include "tools/vsqexport/import/node_index.h"

namespace vsqexport {

/// Adds a model's cameras to `held`, each under the node that it names. They look along the
/// negative z axis of their own space with y up, as the host's cameras do. `lenses` are those of a
/// COLLADA file, one for each camera; other files have none.
void import_cameras(const aiScene& model, const std::vector<ColladaLens>& lenses,
                    const NodeIndex& nodes, HeldObjects& held, ImportWarnings& warnings);

}  // namespace vsqexport
