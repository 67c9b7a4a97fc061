#include <fstream>

#include "fuzz/fuzz_input.h"
#include "importers/sceneapi/dev/installation.h"
#include "plugins/3dsmax/export/options.h"
#include "standins/host/memory/scene_builder.h"
#include "tests/support/environment_variable.h"
#include "tests/support/temporary_folder.h"

// The file that serves as the registry, or the plug-in's settings file.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const TemporaryFolder folder;
    static const EnvironmentVariable config("XDG_CONFIG_HOME", folder.path().u8string());
    FuzzInput input(data, size);
    const bool is_registry = input.below(2) == 0;
    if (is_registry) {
        std::filesystem::create_directory(folder.path() / "quoria");
        std::ofstream(folder / "quoria/registry.reg", std::ios::binary) << input.rest();
        const qor::Installation& installation = qor::Installation::get();
        int version = 0;
        const std::string bin = installation.bin_folder(5, 11, version);
        require(bin.empty() || (version >= 5 && version <= 11), "a version out of range");
        installation.bin_name(5, 11);
        installation.resource_folder(5, 11);
        std::int32_t first = 0;
        std::int32_t last = 0;
        installation.live_link_ports(5, 11, first, last);
        return 0;
    }
    memhost::SceneBuilder scene;
    scene.config_folder(folder.path().u8string());
    std::ofstream(folder / "velmoraexport7.ini", std::ios::binary) << input.rest();
    Qor::Options options(&scene.host());
    options.Save();
    const Qor::Options loaded(&scene.host());
    for (const auto field : Qor::kOptionFields) {
        require(options.*field == loaded.*field, "a setting that doesn't stay");
    }
    return 0;
}
