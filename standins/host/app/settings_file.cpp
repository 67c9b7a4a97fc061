#include "standins/host/app/settings_file.h"

#include <cstdlib>
#include <filesystem>
#include <random>
#include <stdexcept>
#include <utility>

#include "standins/host/memory/host_text.h"
#include "standins/host/sdk/max.h"

namespace app {

namespace {

namespace fs = std::filesystem;

constexpr char kFileName[] = "velmoraexport7.ini";

// The settings as they stand in the file.
constexpr struct {
    const wchar_t* section;
    const char* key;
    bool is_on_at_first;
} kSettings[] = {
    {L"Curves", "HairAndFur", true},
    {L"Curves", "GeneralCurves", false},
    {L"Lights", "PhotometricLights", true},
    {L"Lights", "SkyLights", true},
    {L"Animation", "Bones", true},
    {L"Animation", "TransformAnimations", true},
    {L"Animation", "CameraAnimations", true},
    {L"Animation", "Deformable", true},
    {L"General", "cameras", true},
    {L"General", "Layers", false},
};

struct Change {
    const wchar_t* section;
    std::wstring key;
    bool on;
};

fs::path configuration_folder() {
#ifdef _WIN32
    const wchar_t* value = _wgetenv(L"APPDATA");
    return fs::path(value != nullptr ? value : L"") / "Quoria";
#else
    const auto environment = [](const char* name) {
        const char* value = std::getenv(name);
        return std::string(value != nullptr ? value : "");
    };
    const std::string config = environment("XDG_CONFIG_HOME");
    return (config.empty() ? fs::u8path(environment("HOME")) / ".config" : fs::u8path(config)) /
           "quoria";
#endif
}

std::wstring file_in(const std::string& folder) {
    return memhost::units_from_utf8((fs::u8path(folder) / kFileName).u8string());
}

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

Change parse_setting(const std::string& setting) {
    const size_t equals = setting.find('=');
    if (equals == std::string::npos) {
        throw std::invalid_argument("a setting is KEY=VALUE, not '" + setting + "'");
    }
    const std::string key = setting.substr(0, equals);
    std::string known;
    for (const auto& one : kSettings) {
        if (key == one.key) {
            return {one.section, memhost::units_from_utf8(key),
                    parse_switch(key, setting.substr(equals + 1))};
        }
        known += (known.empty() ? "" : ", ") + std::string(one.key);
    }
    throw std::invalid_argument("no setting is named '" + key + "' (there are: " + known + ")");
}

fs::path new_temporary_folder() {
    std::random_device random;
    for (;;) {
        const fs::path folder =
            fs::temp_directory_path() / ("vsqexport-settings-" + std::to_string(random()));
        if (fs::create_directory(folder)) {
            return folder;
        }
    }
}

}  // namespace

std::string user_settings_folder() {
    const fs::path folder = configuration_folder() / "plugcfg";
    std::error_code ignored;  // a file that can't be read is one that isn't there
    fs::create_directories(folder, ignored);
    return folder.u8string();
}

void change_settings(const std::string& folder, const std::vector<std::string>& settings) {
    std::vector<Change> changes;
    for (const std::string& setting : settings) {
        changes.push_back(parse_setting(setting));
    }
    const std::wstring file = file_in(folder);
    for (const Change& change : changes) {
        if (!MaxSDK::Util::WritePrivateProfileString(change.section, change.key.c_str(),
                                                     change.on ? L"1" : L"0", file.c_str())) {
            throw std::runtime_error(memhost::utf8_from_units(file) + ": it can't be written");
        }
    }
}

std::string list_settings(const std::string& folder) {
    const std::wstring file = file_in(folder);
    std::string list;
    for (const auto& one : kSettings) {
        wchar_t value[260];
        MaxSDK::Util::GetPrivateProfileString(
            one.section, memhost::units_from_utf8(one.key).c_str(),
            one.is_on_at_first ? L"1" : L"0", value, 260, file.c_str());
        list += one.key + std::string(value == std::wstring(L"1") ? "=1\n" : "=0\n");
    }
    return list;
}

SettingsOfRun::TemporaryFolder::TemporaryFolder() : path(new_temporary_folder().u8string()) {}

SettingsOfRun::TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(fs::u8path(path), ignored);
}

SettingsOfRun::SettingsOfRun(const std::vector<std::string>& settings)
    : users_folder_(user_settings_folder()) {
    if (settings.empty()) {
        return;
    }
    copy_.emplace();
    std::error_code ignored;  // the user needn't have one
    fs::copy_file(fs::u8path(users_folder_) / kFileName, fs::u8path(folder()) / kFileName, ignored);
    change_settings(folder(), settings);
}

}  // namespace app
