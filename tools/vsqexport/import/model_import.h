#pragma once

#include <string>
#include <vector>

#include "standins/host/memory/scene_builder.h"

namespace vsqexport {

/// Reads a model file of any format that assimp knows and adds its nodes to `scene`: names,
/// hierarchy and places, meshes and materials, cameras and point lights, in the order of the file.
/// The meshes of a node become one, with the materials in the order of their first use.
///
/// Nodes move as the first animation of the file has them, and the animation range becomes that
/// animation's, in frames of the length that `scene` has before. Without one the range stays.
///
/// Meshes with bones or morph targets change their shape with it; where nothing of that moves, they
/// stay in the shape that they have at the start.
///
/// The host's Z is up, so the top nodes are turned where the file's is another axis; the places
/// below are the file's own. The scene's unit becomes the file's where the format or the file tells
/// it. A root that assimp puts around the file's nodes isn't kept, unless it has a place of its own
/// or the turn has to go there.
///
/// Gives a line for each thing that is left out, such as a texture that isn't found.
///
/// Throws `std::runtime_error` with one line, which names the file and the reason, if nothing can
/// be had from it. `scene` is then unchanged.
std::vector<std::string> import_model(const std::string& path_utf8, memhost::SceneBuilder& scene);

}  // namespace vsqexport
