#pragma once

#include <optional>
#include <stdexcept>
#include <string>

#include "standins/renderer/running_renderers.h"
#include "tools/vsqexport/export_report.h"
#include "tools/vsqexport/plugin_commands.h"

namespace vsqexport {

/// Thrown where the user stopped a command, with one line that says what has become of the scene.
class Cancelled : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The plug-in's commands with what the host does around them: a progress bar on a terminal, the
// user's cancel, and a look at what came out. Each throws `Cancelled` or, with what the plug-in
// told the user, `std::runtime_error`.

/// Export. Gives nothing for a target that can't be read back, such as standard output.
std::optional<ExportReport> export_scene(memhost::MemoryHost& host, PluginCommands& plugin,
                                         const std::string& target);

/// Export Animation. `target` ends in ".vsq", and its frames have a number in front of that. What a
/// cancel finds written stays. A failure names the file of the frame that it stopped.
ExportReport export_animation(memhost::MemoryHost& host, PluginCommands& plugin,
                              const std::string& target);

/// A scene that went over the live link.
struct SentScene {
    velmora::RunningRenderer renderer;
    bool was_started;     ///< by the command
    ExportReport report;  ///< on what the renderer received

    /// "Velmora 11.0 (process 4711, port 7400)".
    std::string renderer_text() const;
};

enum class Sending { kRender, kUpdate };

SentScene send_scene(memhost::MemoryHost& host, PluginCommands& plugin, Sending sending);

}  // namespace vsqexport
