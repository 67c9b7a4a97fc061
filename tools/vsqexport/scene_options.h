#pragma once

#include <string>
#include <vector>

#include "standins/host/memory/scene_builder.h"
#include "tools/vsqexport/import/import_options.h"
#include "tools/vsqexport/loss_report.h"

namespace vsqexport {

/// The options of a command line for the scene and the export.
struct SceneOptions {
    std::string scene;                  ///< a model file or demo:NAME
    std::vector<std::string> settings;  ///< KEY=VALUE
    std::string frames;                 ///< FIRST:LAST; empty keeps the scene's own range
    double frames_per_second = 0;       ///< 0 keeps the scene's own
    std::string strict_host;            ///< names of rules, separated by commas; empty for none
    std::string unit;                   ///< such as "cm"; empty keeps the scene's own
    ImportOptions import;  ///< for model files; `has_unit` and `up_axis` follow from the texts
    std::string up;        ///< "x", "y" or "z"; empty keeps the model's own
    bool lists_animations = false;  ///< show the animations of the model and do nothing else
};

/// Opens the scene in the host and delivers the events of its nodes. Throws `std::invalid_argument`
/// with one line for an invalid option, and `std::runtime_error` for a scene that can't be loaded.
/// Returns what the importer leaves out, which it also shows on standard error unless `quiet`.
LossReport open_scene(const SceneOptions& options, memhost::SceneBuilder& scene,
                      bool quiet = false);

}  // namespace vsqexport
