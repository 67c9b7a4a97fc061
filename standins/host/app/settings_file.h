#pragma once

#include <string>
#include <vector>

namespace app {

/// The user's folder for the settings files of plug-ins, as UTF-8; it is made if it is missing.
std::string user_settings_folder();

/// Changes the settings file in a folder, in the order of `settings`, each KEY=VALUE. Throws
/// `std::invalid_argument` with one line, and changes nothing, if one of them is no setting, and
/// `std::runtime_error` if the file can't be written.
void change_settings(const std::string& folder, const std::vector<std::string>& settings);

/// What is in force, a line KEY=VALUE for each setting.
std::string list_settings(const std::string& folder);

/// Where the plug-in finds the settings of one run: the user's own folder, or, if the run has
/// settings of its own, a copy that goes with the object.
class SettingsOfRun {
public:
    /// Throws as `change_settings` does.
    explicit SettingsOfRun(const std::vector<std::string>& settings);
    SettingsOfRun(const SettingsOfRun&) = delete;
    SettingsOfRun& operator=(const SettingsOfRun&) = delete;
    ~SettingsOfRun();

    const std::string& folder() const { return folder_; }

private:
    std::string folder_;
    bool is_copy_;
};

}  // namespace app
