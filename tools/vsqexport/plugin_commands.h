#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "standins/host/memory/memory_host.h"

namespace vsqexport {

/// The plug-in in the headless host. It is loaded and started before a scene is opened, and is then
/// used only through the host's own interfaces. Its commands are the entries of its menu.
class PluginCommands {
public:
    /// Borrows `host`. The plug-in reads its settings file from `settings_folder`, a UTF-8 path.
    /// Throws `std::runtime_error` with one line if the plug-in can't be loaded.
    PluginCommands(memhost::MemoryHost& host, const std::string& settings_folder);
    PluginCommands(const PluginCommands&) = delete;
    PluginCommands& operator=(const PluginCommands&) = delete;
    ~PluginCommands();

    // Each returns the texts of the message boxes that came up; none on success.
    [[nodiscard]] std::vector<std::string> render();
    [[nodiscard]] std::vector<std::string> update();
    /// `path`, UTF-8, is the answer to the save dialog.
    [[nodiscard]] std::vector<std::string> export_to(const std::string& path);
    [[nodiscard]] std::vector<std::string> export_animation_to(const std::string& path);
    /// From the next command on, texts and reports call each of these files by another name.
    void show_as(std::map<std::string, std::string> names) { shown_names_ = std::move(names); }
    /// Opens the settings dialog, which only a person can answer.
    [[nodiscard]] std::vector<std::string> settings();

    /// The folder with the settings file that the plug-in has read.
    const std::string& settings_folder() const { return settings_folder_; }

    /// The report that the last command has handed over, as JSON; empty if it handed over none, or
    /// if it has been taken already.
    std::string take_report() { return std::exchange(report_, {}); }

private:
    std::vector<std::string> press(const wchar_t* entry);

    memhost::MemoryHost& host_;
    const std::string settings_folder_;
    GUP* plugin_;
    std::map<std::string, std::string> shown_names_;
    std::string report_;
};

/// Throws `std::runtime_error` if a command's message boxes left any texts: `prefix` and the text,
/// each on a line of its own.
void throw_if_told(const std::vector<std::string>& texts, const std::string& prefix = "");

}  // namespace vsqexport
