#include "tools/vsqexport/settings_file.h"

#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>
#include <utility>

#include "platform/folders.h"
#include "plugins/3dsmax/export/option_keys.h"
#include "standins/host/memory/host_text.h"
#include "standins/host/sdk/max.h"

namespace vsqexport {

namespace {

namespace fs = std::filesystem;

struct Change {
    std::wstring section;
    std::wstring key;
    bool on;
};

std::wstring file_in(const std::string& folder) {
    return memhost::units_from_utf8((fs::u8path(folder) / Qor::kSettingsFile).u8string());
}

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
    for (const Qor::OptionKey& one : Qor::kOptionKeys) {
        if (key == one.key) {
            return {memhost::units_from_utf8(one.section), memhost::units_from_utf8(key),
                    parse_switch(key, setting.substr(equals + 1))};
        }
    }
    throw std::invalid_argument("no setting is named '" + key + "' (known: " + list_setting_keys() +
                                ")");
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
    const fs::path folder = fs::u8path(platform::user_configuration_folder()) / "plugcfg";
    std::error_code ignored;  // without the folder, the settings have their defaults
    fs::create_directories(folder, ignored);
    // The plug-in would take the defaults without a word.
    const fs::path file = folder / Qor::kSettingsFile;
    if (fs::exists(file, ignored) && !std::ifstream(file)) {
        throw std::runtime_error(file.u8string() + ": the settings can't be read");
    }
    return folder.u8string();
}

void change_settings(const std::string& folder, const std::vector<std::string>& settings) {
    std::vector<Change> changes;
    for (const std::string& setting : settings) {
        changes.push_back(parse_setting(setting));
    }
    const std::wstring file = file_in(folder);
    for (const Change& change : changes) {
        if (!MaxSDK::Util::WritePrivateProfileString(change.section.c_str(), change.key.c_str(),
                                                     change.on ? L"1" : L"0", file.c_str())) {
            throw std::runtime_error(memhost::utf8_from_units(file) + ": it can't be written");
        }
    }
}

std::string list_setting_keys() {
    std::string list;
    for (const Qor::OptionKey& one : Qor::kOptionKeys) {
        list += (list.empty() ? "" : ", ") + std::string(one.key);
    }
    return list;
}

std::string list_settings(const std::string& folder) {
    const std::wstring file = file_in(folder);
    std::string list;
    for (const Qor::OptionKey& one : Qor::kOptionKeys) {
        wchar_t value[260];
        MaxSDK::Util::GetPrivateProfileString(memhost::units_from_utf8(one.section).c_str(),
                                              memhost::units_from_utf8(one.key).c_str(),
                                              one.initially ? L"1" : L"0", value, 260,
                                              file.c_str());
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
    const fs::path users_file = fs::u8path(users_folder_) / Qor::kSettingsFile;
    const fs::path copy = fs::u8path(folder()) / Qor::kSettingsFile;
    std::error_code error;
    if (fs::exists(users_file, error) && !fs::copy_file(users_file, copy, error)) {
        throw std::runtime_error(copy.u8string() +
                                 ": the settings can't be copied: " + error.message());
    }
    change_settings(folder(), settings);
}

}  // namespace vsqexport
