#include "tools/vsqexport/scene_source.h"

#include <cstdio>
#include <stdexcept>

#include "standins/host/memory/demo_scenes.h"
#ifdef VSQ_WITH_IMPORTER
#include "tools/vsqexport/import/model_import.h"
#endif

namespace vsqexport {

namespace {

const std::string kDemoPrefix = "demo:";

void load_demo(const std::string& name, memhost::SceneBuilder& scene) {
    const memhost::DemoScene* demo = memhost::find_demo_scene(name);
    if (demo == nullptr) {
        std::string known;
        for (const memhost::DemoScene& candidate : memhost::demo_scenes()) {
            known += (known.empty() ? "" : ", ") + std::string(candidate.name);
        }
        throw std::runtime_error("no demo scene is named '" + name + "' (known: " + known + ")");
    }
    demo->build(scene);
}

}  // namespace

LossReport load_scene(const std::string& source, memhost::SceneBuilder& scene, bool quiet,
                      const ImportOptions& options) {
    LossReport losses;
    if (source.compare(0, kDemoPrefix.size(), kDemoPrefix) == 0) {
        if (!options.animations.empty() || options.up_axis || options.scale != 1) {
            throw std::invalid_argument("--animation, --up and --scale are for model files");
        }
        load_demo(source.substr(kDemoPrefix.size()), scene);
        return losses;
    }
#ifdef VSQ_WITH_IMPORTER
    for (const ImportWarning& warning : vsqexport::import_model(source, scene, options)) {
        if (!quiet) {
            std::fprintf(stderr, "vsqexport: warning: %s\n", warning.text.c_str());
        }
        losses.add_shown({warning.code, warning.severity, "", source, warning.text, 1});
    }
    return losses;
#else
    static_cast<void>(quiet);
    static_cast<void>(options);
    throw std::runtime_error(source + ": this build reads no model files, only demo scenes");
#endif
}

std::string list_of_animations(const std::string& source) {
    if (source.compare(0, kDemoPrefix.size(), kDemoPrefix) == 0) {
        throw std::invalid_argument("--animations is for model files");
    }
#ifdef VSQ_WITH_IMPORTER
    return list_animations(source);
#else
    throw std::runtime_error(source + ": this build reads no model files, only demo scenes");
#endif
}

std::string list_of_demo_scenes() {
    std::string list;
    for (const memhost::DemoScene& demo : memhost::demo_scenes()) {
        list += "  " + kDemoPrefix + demo.name + ": " + demo.description + "\n";
    }
    return list;
}

}  // namespace vsqexport
