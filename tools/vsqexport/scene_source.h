#pragma once

#include <string>

#include "standins/host/memory/scene_builder.h"
#include "tools/vsqexport/import/import_options.h"
#include "tools/vsqexport/loss_report.h"

namespace vsqexport {

/// Fills `scene` from `source`: "demo:NAME", or the path of a model file in UTF-8. Warnings on
/// standard error name what is left out of a model file, unless `quiet`; the report that is
/// returned has them in any case. Throws `std::runtime_error` with one line that names the scene
/// and the reason.
///
/// `options` are those for model files.
LossReport load_scene(const std::string& source, memhost::SceneBuilder& scene, bool quiet = false,
                      const ImportOptions& options = {});

/// The animations of a model file, a line for each. Throws as `load_scene` does.
std::string list_of_animations(const std::string& source);

/// The demo scenes with their descriptions, one to a line.
std::string list_of_demo_scenes();

}  // namespace vsqexport
