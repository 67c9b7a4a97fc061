#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vsqexport {

/// The user's folder for the settings files of plug-ins, as UTF-8; created if it is missing.
/// Throws `std::runtime_error` if there is a settings file but it can't be read.
std::string user_settings_folder();

/// Changes the settings file in a folder. `settings`, each KEY=VALUE, are applied in order. Throws
/// `std::invalid_argument` with one line, and changes nothing, if one of them is invalid; throws
/// `std::runtime_error` if the file can't be written.
void change_settings(const std::string& folder, const std::vector<std::string>& settings);

/// The keys of all settings, with commas between them.
std::string list_setting_keys();

/// The settings in force, each on a line KEY=VALUE; defaults for those that the file doesn't set.
std::string list_settings(const std::string& folder);

/// The folder from which the plug-in reads the settings of one run: the user's own folder, or, if
/// the run has settings of its own, a temporary copy that is deleted with the object.
class SettingsOfRun {
public:
    /// Throws as `change_settings` does, or if the user's settings can't be read or copied.
    explicit SettingsOfRun(const std::vector<std::string>& settings);

    const std::string& folder() const { return copy_ ? copy_->path : users_folder_; }

private:
    /// A new folder, deleted with the object.
    struct TemporaryFolder {
        TemporaryFolder();
        TemporaryFolder(const TemporaryFolder&) = delete;
        TemporaryFolder& operator=(const TemporaryFolder&) = delete;
        ~TemporaryFolder();

        const std::string path;
    };

    std::string users_folder_;
    std::optional<TemporaryFolder> copy_;
};

}  // namespace vsqexport
