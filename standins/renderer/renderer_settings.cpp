#include "standins/renderer/renderer_settings.h"

#include <cstdio>
#include <stdexcept>
#include <utility>

#include "standins/renderer/operating_system.h"

namespace velmora {

namespace {

[[noreturn]] void refuse(const char* name, const std::string& value) {
    throw std::invalid_argument(std::string(name) + "=" + value + " is not valid (see --help)");
}

void read_version(RendererSettings& settings) {
    const std::string value = environment_value("VELMORA_VERSION");
    if (value.empty()) {
        return;
    }
    char behind = 0;
    if (std::sscanf(value.c_str(), "%9d.%9d%c", &settings.version_major, &settings.version_minor,
                    &behind) != 2) {
        refuse("VELMORA_VERSION", value);
    }
}

Fault read_fault() {
    const std::string value = environment_value("VELMORA_FAULT");
    if (value.empty()) {
        return {};
    }
    constexpr std::pair<const char*, Fault::Kind> kKinds[] = {
        {"die-after=%18llu%c", Fault::Kind::kDie},
        {"hang-after=%18llu%c", Fault::Kind::kHang},
        {"nonsense-after=%18llu%c", Fault::Kind::kAnswerNonsense},
    };
    for (const auto& [form, kind] : kKinds) {
        unsigned long long bytes = 0;
        char behind = 0;
        if (std::sscanf(value.c_str(), form, &bytes, &behind) == 1) {
            return {kind, bytes};
        }
    }
    refuse("VELMORA_FAULT", value);
}

}  // namespace

const char kSettingsHelp[] =
    "Environment variables, most of them for tests:\n"
    "  VELMORA_VERSION=11.0        the version to announce\n"
    "  VELMORA_SILENT=1            announce nothing: clients must know the port\n"
    "  VELMORA_SCENES=FOLDER       the folder for scenes; without it they are in quoria/scenes\n"
    "                              below the user's data until another renderer starts\n"
    "  VELMORA_FAULT=die-after=N   die once a connection has sent N bytes; 0: once it is open\n"
    "  VELMORA_FAULT=hang-after=N  hang instead: neither read nor answer on that connection\n"
    "  VELMORA_FAULT=nonsense-after=N  answer with bytes that mean nothing\n"
    "A request for the scene tree sends less than 100 bytes.\n"
    "The live library reads VELMORA_LINK_TIMEOUT_MS=5000: how many milliseconds a renderer may\n"
    "take to answer a question, or to accept a megabyte of a scene.\n";

RendererSettings settings_from_environment() {
    RendererSettings settings;
    read_version(settings);
    settings.is_silent = !environment_value("VELMORA_SILENT").empty();
    settings.fault = read_fault();
    settings.scene_folder = environment_value("VELMORA_SCENES");
    return settings;
}

}  // namespace velmora
