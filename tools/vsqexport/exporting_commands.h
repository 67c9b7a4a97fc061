#pragma once

#include <optional>
#include <stdexcept>
#include <string>

#include "standins/renderer/running_renderers.h"
#include "tools/vsqexport/animation_plan.h"
#include "tools/vsqexport/export_report.h"
#include "tools/vsqexport/plugin_commands.h"

namespace vsqexport {

/// Thrown when the user has cancelled a command, with one line that says what was written or sent.
class Cancelled : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// These run the plug-in's commands with a progress bar on a terminal, notice a cancel, and check
// the result. Each throws `Cancelled`, or `std::runtime_error` with the text that the plug-in has
// shown the user.

/// Export. The scene is written beside the target and takes its place when it's whole, so a command
/// that fails or is cancelled leaves the target as it was. Returns nothing for a target that can't
/// be read back, such as standard output, which is written directly. With `clean`, the mesh files
/// that earlier exports to the same target have made are removed afterwards.
std::optional<ExportReport> export_scene(memhost::MemoryHost& host, PluginCommands& plugin,
                                         const std::string& target, bool clean = false);

/// Export Animation. `target` ends in ".vsq"; the files of the frames have a number before that,
/// counted from the start of the animation range. Each frame takes the place of an older one when
/// it's whole, and the script is written at last. After a cancel it renders the frames that are
/// whole. A failure names the file of the frame at which it happened. Throws
/// `std::invalid_argument` if the options leave no frames.
ExportReport export_animation(memhost::MemoryHost& host, PluginCommands& plugin,
                              const std::string& target, const AnimationOptions& options = {});

/// A scene that was sent over the live link.
struct SentScene {
    velmora::RunningRenderer renderer;
    bool was_started;     ///< the command started the renderer
    ExportReport report;  ///< on the scene as the renderer received it
    std::string file;     ///< in which the renderer keeps it

    /// "Velmora 11.0 (process 4711, port 7400)".
    std::string renderer_text() const;
};

enum class Sending { kRender, kUpdate };

SentScene send_scene(memhost::MemoryHost& host, PluginCommands& plugin, Sending sending);

}  // namespace vsqexport
