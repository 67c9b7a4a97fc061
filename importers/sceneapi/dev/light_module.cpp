#include "importers/sceneapi/dev/light_module.h"

#include <utility>

#include "importers/sceneapi/dev/qorscene_api.h"
#include "importers/sceneapi/dev/qorsceneapi_oo.h"

namespace qor {

LightModule::LightModule(std::string name) : name_(std::move(name)) {}

void LightModule::emit(qorSceneapi_oo& scene) {
    scene.get_api()->begin_load(name_.c_str());
    write_parameters(scene);
    scene.get_api()->end_load();
}

}  // namespace qor
