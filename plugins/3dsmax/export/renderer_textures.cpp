#include "plugins/3dsmax/export/renderer_textures.h"

#include "platform/registry.h"

std::string GetRendererTexturesFolder() {
    std::string resource_folder;
    if (const auto key = platform::RegistryKey::open(platform::RegistryHive::kLocalMachine,
                                                     "SOFTWARE\\Quoria\\Velmora 11")) {
        resource_folder = key->read_text("ResourceFolder").value_or("");
    }
    return resource_folder + "/textures/";
}
