#pragma once

#include <memory>
#include <string>
#include <vector>

#include "standins/host/memory/memory_host.h"

namespace app {

/// The plug-in in the headless host: it starts before a scene is opened, listens to what happens to
/// the nodes from then on, and carries out the commands of its menu. The app knows nothing else of
/// the plug-in.
class PluginCommands {
public:
    /// Borrows `host`.
    explicit PluginCommands(memhost::MemoryHost& host);
    PluginCommands(const PluginCommands&) = delete;
    PluginCommands& operator=(const PluginCommands&) = delete;
    ~PluginCommands();

    /// Takes KEY=VALUE. Throws `std::invalid_argument` with one line for what is no setting.
    void set(const std::string& setting);

    // Each gives the texts of the message boxes that came up: none if all went well.
    std::vector<std::string> render();
    std::vector<std::string> update();
    /// `path` is UTF-8, and what the user answers the save dialog.
    std::vector<std::string> export_to(const std::string& path);
    std::vector<std::string> export_animation_to(const std::string& path);

private:
    struct Plugin;

    std::vector<std::string> execute(int command);

    memhost::MemoryHost& host_;
    std::unique_ptr<Plugin> plugin_;
};

}  // namespace app
