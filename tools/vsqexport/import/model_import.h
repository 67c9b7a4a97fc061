#pragma once

#include <string>
#include <vector>

#include "standins/host/memory/scene_builder.h"
#include "tools/vsqexport/import/import_options.h"
#include "tools/vsqexport/import/import_warning.h"

namespace vsqexport {

/// Reads a model file of any format that assimp knows and adds its nodes to `scene` in the order of
/// the file: names, hierarchy and transforms, meshes and materials, cameras and lights. The
/// meshes of a node become one, with the materials in the order of their first use.
///
/// Nodes move as in those animations of the file that play together, see `choose_animations`. The
/// animation range becomes that of the longest, in frames at the rate that `scene` already has.
/// Without an animation the range stays.
///
/// Meshes with bones or morph targets deform with the animation. If none of their bones and targets
/// move, they keep the shape that they have at the start.
///
/// The host's Z is up, so the top nodes are rotated if another axis is up in the file; the nodes
/// below keep the file's transforms. The scene gets the file's unit if the format or the file
/// specifies one; a unit that the host doesn't have scales the top nodes. A root that assimp puts
/// around the file's nodes isn't kept, unless it has a transform of its own or needs one for the
/// rotation.
///
/// Returns a warning for each thing that is left out, such as a texture that isn't found.
///
/// Throws `std::runtime_error` with one line, which names the file and the reason, if the file
/// can't be read. `scene` is then unchanged.
ImportWarnings import_model(const std::string& path_utf8, memhost::SceneBuilder& scene,
                            const ImportOptions& options = {});

/// The animations of a model file, a line for each. Throws as `import_model` does.
std::string list_animations(const std::string& path_utf8);

}  // namespace vsqexport
