#include "plugins/3dsmax/export/renderer_textures.h"

#include "importers/sceneapi/dev/installation.h"
#include "platform/registry.h"

std::string GetRendererTexturesFolder() {
    std::string resource_folder;
    if (const auto key = platform::RegistryKey::open(platform::RegistryHive::kLocalMachine,
                                                     qor::installation_key(qor::kSceneRenderer))) {
        resource_folder = key->read_text(qor::kResourceFolderValue).value_or("");
    }
    return resource_folder + "/textures/";
}
