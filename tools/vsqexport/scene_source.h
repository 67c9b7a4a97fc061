#pragma once

#include <string>

#include "standins/host/memory/scene_builder.h"

namespace vsqexport {

/// Fills `scene` from `source`: "demo:NAME", or the path of a model file in UTF-8. Warnings on
/// standard error name what is left out of a model file. Throws `std::runtime_error` with one line
/// that names the scene and the reason.
void load_scene(const std::string& source, memhost::SceneBuilder& scene);

/// The demo scenes with their descriptions, one to a line.
std::string list_of_demo_scenes();

}  // namespace vsqexport
