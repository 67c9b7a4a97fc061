#pragma once

#include <assimp/scene.h>

#include "tools/vsqexport/import/import_warning.h"

namespace vsqexport {

/// Adds a warning with counts for each kind of thing that meshes have and the renderer can't show:
/// points, lines, colours of vertices, and all sets of texture coordinates but one.
void report_unshown_parts(const aiScene& model, ImportWarnings& warnings);

}  // namespace vsqexport
