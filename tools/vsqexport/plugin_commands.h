#pragma once

#include <string>
#include <vector>

#include "standins/host/memory/memory_host.h"

namespace vsqexport {

/// The plug-in in the headless host: it is loaded and started before a scene is opened, and from
/// then on reached through the host's own interfaces alone. Its commands are those of its menu.
class PluginCommands {
public:
    /// Borrows `host`. The plug-in finds its settings file in `settings_folder`, UTF-8. Throws
    /// `std::runtime_error` with one line if the plug-in can't be loaded.
    PluginCommands(memhost::MemoryHost& host, const std::string& settings_folder);
    PluginCommands(const PluginCommands&) = delete;
    PluginCommands& operator=(const PluginCommands&) = delete;
    ~PluginCommands();

    // Each gives the texts of the message boxes that came up: none if all went well.
    [[nodiscard]] std::vector<std::string> render();
    [[nodiscard]] std::vector<std::string> update();
    /// `path` is UTF-8, and what the user answers the save dialog.
    [[nodiscard]] std::vector<std::string> export_to(const std::string& path);
    [[nodiscard]] std::vector<std::string> export_animation_to(const std::string& path);
    /// The dialog, for whoever sits before it.
    [[nodiscard]] std::vector<std::string> settings();

private:
    std::vector<std::string> press(const wchar_t* entry);

    memhost::MemoryHost& host_;
    GUP* plugin_;
};

/// Throws `std::runtime_error` with a line for each text of a command's message boxes, `prefix`
/// in front of it, if there were any.
void throw_if_told(const std::vector<std::string>& texts, const std::string& prefix = "");

}  // namespace vsqexport
