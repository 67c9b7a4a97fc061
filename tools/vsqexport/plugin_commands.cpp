#include "tools/vsqexport/plugin_commands.h"

#include <cstdint>
#include <cstdio>
#include <stdexcept>
#include <utility>

#include "platform/files.h"
#include "platform/folders.h"
#include "standins/host/memory/host_text.h"
#include "tools/vsqexport/json_text.h"
#include "tools/vsqexport/plugin_library.h"

#ifdef _WIN32
#define VSQ_EXPORTED __declspec(dllexport)
#else
#define VSQ_EXPORTED __attribute__((visibility("default")))
#endif

namespace {

void replace_all(std::string& text, const std::string& from, const std::string& to) {
    for (std::size_t place = 0; (place = text.find(from, place)) != std::string::npos;
         place += to.size()) {
        text.replace(place, from.size(), to);
    }
}

// Records the message boxes that come up during its lifetime, and the report. Only one may exist at
// a time.
class BoxRecord {
public:
    BoxRecord() { open_record = this; }
    BoxRecord(const BoxRecord&) = delete;
    BoxRecord& operator=(const BoxRecord&) = delete;
    ~BoxRecord() { open_record = nullptr; }

    std::vector<std::string> texts;
    std::string report;

    static BoxRecord* open_record;  // or null
};

BoxRecord* BoxRecord::open_record = nullptr;

}  // namespace

// Libraries in the process find this function by its name, and give it the texts that they would
// otherwise show in a message box.
extern "C" VSQ_EXPORTED void vsq_host_message_box(const char* text, const char*, std::uint32_t) {
    if (BoxRecord::open_record != nullptr) {
        BoxRecord::open_record->texts.push_back(text);
    } else {
        std::fprintf(stderr, "vsqexport: %s\n", text);
    }
}

// The plug-in hands the report of each exporting command to this function.
extern "C" VSQ_EXPORTED void vsq_host_export_report(const char* json_utf8) {
    if (BoxRecord::open_record != nullptr) {
        BoxRecord::open_record->report = json_utf8;
    }
}

namespace vsqexport {

namespace {

constexpr char kPluginFile[] = "VSQExportR2023.dle";

// The library stays loaded until the process ends, as in the host.
const PluginLibrary& plugin_library() {
    static const auto* const library =
        new PluginLibrary(platform::program_folder() + platform::kSeparator + kPluginFile);
    return *library;
}

// The host keeps utilities until the process ends, even after they have been stopped.
std::vector<GUP*>& utilities() {
    static auto* const all = new std::vector<GUP*>;
    return *all;
}

}  // namespace

PluginCommands::PluginCommands(memhost::MemoryHost& host, const std::string& settings_folder)
    : host_(host), settings_folder_(settings_folder) {
    host_.set_config_folder(memhost::units_from_utf8(settings_folder));
    ClassDesc& class_desc = plugin_library().class_desc();
    plugin_ = static_cast<GUP*>(class_desc.Create(FALSE));
    utilities().push_back(plugin_);
    host_.start_plugin(class_desc, *plugin_);
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
    report_.clear();
    BoxRecord record;
    if (!host_.menus().press(entry)) {
        throw std::runtime_error("the plug-in has no menu entry '" +
                                 memhost::utf8_from_units(entry) + "'");
    }
    for (const auto& [path, shown] : shown_names_) {
        replace_all(record.report, json_text(path), json_text(shown));
        for (std::string& text : record.texts) {
            replace_all(text, path, shown);
        }
    }
    report_ = std::move(record.report);
    return std::move(record.texts);
}

void throw_if_told(const std::vector<std::string>& texts, const std::string& prefix) {
    std::string lines;
    for (const std::string& text : texts) {
        lines += (lines.empty() ? "" : "\n") + prefix + text;
    }
    if (!lines.empty()) {
        throw std::runtime_error(lines);
    }
}

}  // namespace vsqexport
