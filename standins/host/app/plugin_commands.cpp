#include "standins/host/app/plugin_commands.h"

#include <stdexcept>

#include "platform/message_box.h"
#include "plugins/3dsmax/export/options.h"
#include "plugins/3dsmax/shell/callback.h"
#include "plugins/3dsmax/shell/command_ids.h"

namespace app {

namespace {

// "1", "on" and "true" are on.
bool parse_switch(const std::string& key, const std::string& value) {
    for (const char* on : {"1", "on", "true"}) {
        if (value == on) {
            return true;
        }
    }
    for (const char* off : {"0", "off", "false"}) {
        if (value == off) {
            return false;
        }
    }
    throw std::invalid_argument("setting " + key + ": '" + value + "' is neither 1 nor 0");
}

}  // namespace

struct PluginCommands::Plugin {
    explicit Plugin(Interface* host)
        : options(std::make_shared<Qor::Options>(host)),
          callback(host, options),
          listening(GetISceneEventManager()->RegisterCallback(&callback, FALSE, 0, FALSE)) {}
    Plugin(const Plugin&) = delete;
    Plugin& operator=(const Plugin&) = delete;
    ~Plugin() { GetISceneEventManager()->UnRegisterCallback(listening); }

    std::shared_ptr<Qor::Options> options;
    Callback callback;
    ISceneEventManager::CallbackKey listening;
};

PluginCommands::PluginCommands(memhost::MemoryHost& host)
    : host_(host), plugin_(std::make_unique<Plugin>(&host)) {}

PluginCommands::~PluginCommands() = default;

void PluginCommands::set(const std::string& setting) {
    const size_t equals = setting.find('=');
    if (equals == std::string::npos) {
        throw std::invalid_argument("a setting is KEY=VALUE, not '" + setting + "'");
    }
    const std::string key = setting.substr(0, equals);
    std::string known;
    for (const Qor::OptionKey& option : Qor::kOptionKeys) {
        if (key == option.key) {
            (*plugin_->options).*option.field = parse_switch(key, setting.substr(equals + 1));
            return;
        }
        known += (known.empty() ? "" : ", ") + std::string(option.key);
    }
    throw std::invalid_argument("no setting is named '" + key + "' (there are: " + known + ")");
}

std::vector<std::string> PluginCommands::render() {
    return execute(kRenderCommand);
}

std::vector<std::string> PluginCommands::update() {
    return execute(kUpdateCommand);
}

std::vector<std::string> PluginCommands::export_to(const std::string& path) {
    host_.answer_save_dialog(path);
    return execute(kExportCommand);
}

std::vector<std::string> PluginCommands::export_animation_to(const std::string& path) {
    host_.answer_save_dialog(path);
    return execute(kExportAnimationCommand);
}

// Where the host would open a box, the headless one takes its text down.
std::vector<std::string> PluginCommands::execute(int command) {
    std::vector<std::string> texts;
    platform::set_message_box_handler([&texts](const std::string& text, const std::string&,
                                               std::uint32_t) { texts.push_back(text); });
    plugin_->callback.ExecuteAction(command);
    platform::set_message_box_handler({});
    return texts;
}

}  // namespace app
