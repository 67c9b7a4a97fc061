#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "standins/host/memory/memory_host.h"
#include "tools/vsqexport/plugin_commands.h"
#include "tools/vsqexport/reported_command.h"
#include "tools/vsqexport/word_completion.h"

namespace vsqexport {

/// How exporting commands tell their results, and what the importer has left out.
struct Telling {
    ReportOptions options = {};
    LossReport imported = {};
};

/// A user's session with an open scene. Each line of text is a command: an edit of a node, or one
/// of the plug-in's commands.
///
///     Session session(scene.host(), plugin, "lamp.gltf");
///     session.carry_out("hide Shade");
///     session.carry_out("update");  // "update: 0 objects, ... sent to Velmora 11.0 ..."
class Session {
public:
    /// Borrows `host`, whose scene is open, and `plugin`. `scene` is the model file, or the
    /// demo:NAME, of that scene.
    Session(memhost::MemoryHost& host, PluginCommands& plugin, std::string scene,
            Telling telling = {});

    /// Returns one line, without a line feed, that says what happened; `help` and `nodes` return
    /// several lines, and an empty command returns an empty text. Delivers the host's events before
    /// it returns. Throws an exception with one line if the command is wrong or fails.
    std::string carry_out(const std::string& line);

    /// Completes the last word of a line that a person is typing: a command, or the name of a node.
    Completion complete(const std::string& line) const;

    /// What the last command has to say on standard error.
    std::string take_remarks() { return std::exchange(remarks_, {}); }

    /// Whether a command has lost something, with the option that makes that a failure.
    bool has_strict_losses() const { return has_losses_ && telling_.options.strict; }

    /// True after `quit`.
    bool is_over() const { return is_over_; }

    /// The list that the command `help` prints.
    static std::string help();

private:
    using Words = std::vector<std::string>;

    struct Command {
        const char* name;
        const char* arguments;  // one word each
        const char* help;
        std::string (Session::*act)(const Words& words);
    };

    static const Command kCommands[];

    std::string render(const Words& words);
    std::string update(const Words& words);
    std::string write(const Words& words);
    std::string write_animation(const Words& words);
    std::string picture(const Words& words);
    std::string hide(const Words& words);
    std::string unhide(const Words& words);
    std::string move(const Words& words);
    std::string remove(const Words& words);
    std::string rename(const Words& words);
    std::string go_to_frame(const Words& words);
    std::string list_nodes(const Words& words);
    std::string settings(const Words& words);
    std::string list_commands(const Words& words);
    std::string quit(const Words& words);

    // Runs an exporting command. Its answer is the sentence that `command` puts into the summary.
    std::string report(const char* name,
                       const std::function<std::optional<ExportReport>()>& command);
    std::string set_hidden(const Words& words, bool hidden);
    // The nodes below the root, which users can't name, in the order of the tree.
    std::vector<memhost::MemoryNode*> named_nodes() const;
    memhost::MemoryNode& node_named(const std::string& name) const;

    memhost::MemoryHost& host_;
    PluginCommands& plugin_;
    std::string scene_;
    Telling telling_;
    std::string remarks_;
    std::vector<std::string> sent_files_;  // the last whole scene, and the updates since then
    bool has_losses_ = false;
    bool is_over_ = false;
};

/// Runs a session on standard input and output, with a prompt on a terminal. Without a terminal,
/// errors name their line, and the result is 1 if a command failed and else 3 if one had strict
/// losses. Otherwise it is 0.
int run_session(Session& session);

}  // namespace vsqexport
