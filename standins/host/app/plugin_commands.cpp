#include "standins/host/app/plugin_commands.h"

#include <cstdint>
#include <stdexcept>

#include "standins/host/app/plugin_library.h"
#include "standins/host/memory/host_text.h"

#ifdef _WIN32
#define VSQ_EXPORTED __declspec(dllexport)
#else
#define VSQ_EXPORTED __attribute__((visibility("default")))
#endif

namespace {

// Where the texts of message boxes go while a command runs.
std::vector<std::string>*& told() {
    static std::vector<std::string>* texts = nullptr;
    return texts;
}

}  // namespace

// Found by this name by whoever is loaded into the process and has something to tell: the headless
// host takes down what would else come up in a box.
extern "C" VSQ_EXPORTED void vsq_host_message_box(const char* text, const char*, std::uint32_t) {
    if (told() != nullptr) {
        told()->push_back(text);
    }
}

namespace app {

namespace {

constexpr char kPluginFile[] = "VSQExportR2023.dle";

const PluginLibrary& plugin_library() {
    static const PluginLibrary library(own_folder() + "/" + kPluginFile);
    return library;
}

// A utility is the host's until the process ends, also when it has been stopped.
std::vector<GUP*>& utilities() {
    static auto* const all = new std::vector<GUP*>;
    return *all;
}

}  // namespace

PluginCommands::PluginCommands(memhost::MemoryHost& host, const std::string& settings_folder)
    : host_(host) {
    host_.set_config_folder(memhost::units_from_utf8(settings_folder));
    ClassDesc& class_desc = plugin_library().class_desc();
    host_.actions().add_tables(class_desc);
    plugin_ = static_cast<GUP*>(class_desc.Create(FALSE));
    utilities().push_back(plugin_);
    plugin_->Start();
}

PluginCommands::~PluginCommands() {
    plugin_->Stop();
    plugin_->DeleteThis();
}

std::vector<std::string> PluginCommands::render() {
    return press(L"Velmora/Render");
}

std::vector<std::string> PluginCommands::update() {
    return press(L"Velmora/Update");
}

std::vector<std::string> PluginCommands::export_to(const std::string& path) {
    host_.answer_save_dialog(path);
    return press(L"Velmora/Export");
}

std::vector<std::string> PluginCommands::export_animation_to(const std::string& path) {
    host_.answer_save_dialog(path);
    return press(L"Velmora/Export Animation ");
}

std::vector<std::string> PluginCommands::settings() {
    return press(L"Velmora/Settings");
}

std::vector<std::string> PluginCommands::press(const wchar_t* entry) {
    std::vector<std::string> texts;
    told() = &texts;
    const bool carried_out = host_.menus().press(entry);
    told() = nullptr;
    if (!carried_out) {
        throw std::runtime_error("the plug-in shows no '" + memhost::utf8_from_units(entry) +
                                 "' in the menu");
    }
    return texts;
}

}  // namespace app
