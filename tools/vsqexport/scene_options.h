#pragma once

#include <string>
#include <vector>

#include "standins/host/memory/scene_builder.h"

namespace vsqexport {

/// What a command line says of the scene and of the export.
struct SceneOptions {
    std::string scene;                  ///< a model file or demo:NAME
    std::vector<std::string> settings;  ///< KEY=VALUE
    std::string frames;                 ///< FIRST:LAST; empty keeps the scene's own
    int frames_per_second = 30;
    std::string unit;  ///< empty keeps the scene's own
};

/// Opens the scene in the host, whose events tell of every node. Throws `std::invalid_argument`
/// with one line for an option that means nothing, and `std::runtime_error` for a scene that can't
/// be had.
void open_scene(const SceneOptions& options, memhost::SceneBuilder& scene);

}  // namespace vsqexport
