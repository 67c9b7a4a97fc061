#pragma once

#include <string>
#include <vector>

#include "standins/host/memory/memory_host.h"
#include "tools/vsqexport/plugin_commands.h"

namespace vsqexport {

/// The host with a scene open and a person before it: edits of nodes and the plug-in's commands, a
/// line of text for each.
///
///     Session session(scene.host(), plugin, "lamp.gltf");
///     session.carry_out("hide Shade");
///     session.carry_out("update");  // "update: 0 objects, ... sent to Velmora 11.0 ..."
class Session {
public:
    /// Borrows `host`, whose scene is open, and `plugin`. `scene` is what the scene was opened
    /// from.
    Session(memhost::MemoryHost& host, PluginCommands& plugin, std::string scene);

    /// Says what happened, in a line without its line feed; `help` and `nodes` give several, and an
    /// empty line nothing. The host's events are told before this returns. Throws with one line if
    /// the command is wrong or fails.
    std::string carry_out(const std::string& line);

    /// True after `quit`.
    bool is_over() const { return is_over_; }

    /// The list that `help` gives.
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

    std::string set_hidden(const Words& words, bool hidden);
    memhost::MemoryNode& node_named(const std::string& name) const;

    memhost::MemoryHost& host_;
    PluginCommands& plugin_;
    std::string scene_;
    bool is_over_ = false;
};

/// A session on standard input and output: with a prompt on a terminal, else to be piped to. False
/// if something failed in a session without a person, who would have seen it.
bool run_session(Session& session);

}  // namespace vsqexport
