#pragma once

#include <memory>
#include <string>

#include "plugins/3dsmax/export/scene_exporter.h"
#include "standins/host/memory/scene_builder.h"
#include "tests/support/temporary_folder.h"

/// The bytes that Export writes for a scene built in code.
inline std::string exported(memhost::SceneBuilder& scene, const Qor::Options& options) {
    const TemporaryFolder folder;
    SceneExporter exporter(&scene.host(), scene.host().GetRootNode(),
                           std::make_shared<Qor::Options>(options), {});
    exporter.Run(folder / "scene.vsq", false, true, false);
    return file_contents(folder / "scene.vsq");
}

inline std::string exported(memhost::SceneBuilder& scene) {
    return exported(scene, Qor::Options(&scene.host()));
}

/// The contents of the root group of that file, from its flags to its closing brace.
inline std::string exported_nodes(memhost::SceneBuilder& scene) {
    const std::string text = exported(scene);
    const std::string opening = "\ngroup \"object\" {\nflags 0\n";
    const size_t start = text.find(opening) + opening.size();
    return text.substr(start, text.size() - start - 2);
}
