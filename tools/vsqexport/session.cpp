#include "tools/vsqexport/session.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <utility>

#include "standins/host/memory/host_text.h"
#include "tools/vsqexport/command_words.h"
#include "tools/vsqexport/export_target.h"
#include "tools/vsqexport/exporting_commands.h"
#include "tools/vsqexport/frame_number.h"
#include "tools/vsqexport/interruption.h"
#include "tools/vsqexport/line_editor.h"
#include "tools/vsqexport/picture_program.h"
#include "tools/vsqexport/settings_file.h"
#include "tools/vsqexport/terminal.h"
#include "tools/vsqinfo/display_text.h"

namespace vsqexport {

namespace {

using memhost::MemoryNode;

constexpr char kPrompt[] = "> ";

float parse_coordinate(const std::string& text) {
    float number = 0;
    char behind = 0;
    if (std::sscanf(text.c_str(), "%f%c", &number, &behind) != 1 || !std::isfinite(number)) {
        throw std::invalid_argument("'" + text + "' is not a coordinate");
    }
    return number;
}

std::string shown(const std::string& bytes) {
    return "'" + vsqinfo::display_text(bytes) + "'";
}

ExportReport sent(const char* command, const SentScene& scene) {
    ExportReport report = scene.report;
    report.summary = std::string(command) + ": " + report.brief + " sent to " +
                     scene.renderer_text() + (scene.was_started ? ", which was started" : "");
    return report;
}

}  // namespace

const Session::Command Session::kCommands[] = {
    {"render", "", "send the whole scene to the renderer", &Session::render},
    {"update", "", "send what has changed since the last render, update or export, and all hair",
     &Session::update},
    {"export", "FILE", "write the whole scene to a scene file", &Session::write},
    {"animation", "FILE", "write each frame to a scene file of its own, and a script beside them",
     &Session::write_animation},
    {"picture", "FILE", "draw the renderer's scene, after all updates, to a PNG file",
     &Session::picture},
    {"hide", "NODE", "hide the node, which leaves its object out", &Session::hide},
    {"unhide", "NODE", "show the node again", &Session::unhide},
    {"move", "NODE X Y Z", "move the node to X Y Z in its parent's space; its rotation stays",
     &Session::move},
    {"delete", "NODE", "delete the node; its children go to its parent", &Session::remove},
    {"rename", "NODE NAME", "give the node another name", &Session::rename},
    {"frame", "N", "go to that frame", &Session::go_to_frame},
    {"nodes", "", "list the nodes of the scene", &Session::list_nodes},
    {"settings", "", "open the settings dialog; in a pipe, list the settings file",
     &Session::settings},
    {"help", "", "list the commands", &Session::list_commands},
    {"quit", "", "end the session", &Session::quit},
};

Session::Session(memhost::MemoryHost& host, PluginCommands& plugin, std::string scene,
                 Telling telling)
    : host_(host), plugin_(plugin), scene_(std::move(scene)), telling_(std::move(telling)) {}

std::string Session::carry_out(const std::string& line) {
    const Words words = command_words(line);
    if (words.empty()) {
        return "";
    }
    for (const Command& command : kCommands) {
        if (words.front() != command.name) {
            continue;
        }
        const Words wanted = command_words(command.arguments);
        if (words.size() != 1 + wanted.size()) {
            throw std::invalid_argument(words.front() + " takes " +
                                        (wanted.empty() ? "nothing" : command.arguments));
        }
        // As in the host, the events are delivered even if the command fails.
        struct Idle {
            ~Idle() { events.deliver(); }
            memhost::SceneEvents& events;
        } const when_idle{host_.events()};
        return (this->*command.act)(words);
    }
    throw std::invalid_argument("no command is named " + shown(words.front()) +
                                " (help lists the commands)");
}

std::string Session::help() {
    std::string list;
    for (const Command& command : kCommands) {
        const std::string form =
            std::string(command.name) + (*command.arguments != 0 ? " " : "") + command.arguments;
        list += "  " + form + std::string(std::max<size_t>(18 - form.size(), 1), ' ') +
                command.help + "\n";
    }
    return list +
           "Put a name with blanks in quotation marks. If several nodes share a name, it means\n"
           "the first one in the list of nodes. A word that begins with # begins a comment. At a\n"
           "terminal, Tab completes commands and names, and arrows recall earlier lines. When a\n"
           "session starts, the whole scene is new, so the first update sends everything.";
}

std::string Session::render(const Words&) {
    const Interruption interruption(host_);
    return report("render", [&] {
        const SentScene scene = send_scene(host_, plugin_, Sending::kRender);
        sent_files_ = {scene.file};
        return sent("render", scene);
    });
}

std::string Session::update(const Words&) {
    const Interruption interruption(host_);
    return report("update", [&] {
        const SentScene scene = send_scene(host_, plugin_, Sending::kUpdate);
        sent_files_.push_back(scene.file);
        return sent("update", scene);
    });
}

std::string Session::report(const char* name,
                            const std::function<std::optional<ExportReport>()>& command) {
    const ToldResult told =
        run_reported(telling_.options, plugin_, name, telling_.imported, command);
    remarks_ = told.remarks;
    has_losses_ = has_losses_ || told.has_losses;
    std::string answer = told.output;
    if (!answer.empty() && answer.back() == '\n') {
        answer.pop_back();
    }
    if (told.failure) {
        if (telling_.options.json) {
            std::printf("%s\n", answer.c_str());
        }
        std::rethrow_exception(told.failure);
    }
    return answer;
}

std::string Session::write(const Words& words) {
    const std::string& target = words[1];
    if (is_standard_output(target)) {
        throw std::runtime_error("the session itself uses standard output");
    }
    check_report_file(telling_.options, scene_, target);
    const Interruption interruption(host_);
    return report("export", [&] {
        check_export_target(target, scene_);
        std::optional<ExportReport> written = export_scene(host_, plugin_, target);
        if (!written) {
            written.emplace();
            written->json = "null";
        }
        const std::string what = written->brief.empty() ? "" : written->brief + " ";
        written->summary = "export: " + what + "written to " + target;
        return written;
    });
}

std::string Session::write_animation(const Words& words) {
    const std::string& target = words[1];
    check_animation_report_file(telling_.options, scene_, target);
    const Interruption interruption(host_);
    return report("animation", [&] {
        check_animation_target(target, scene_);
        ExportReport written = export_animation(host_, plugin_, target);
        written.summary = "animation: " + written.brief;
        return written;
    });
}

std::string Session::picture(const Words& words) {
    if (sent_files_.empty()) {
        throw std::runtime_error("nothing was sent to the renderer yet");
    }
    draw_picture(sent_files_, words[1]);
    return "picture: " + words[1];
}

std::string Session::hide(const Words& words) {
    return set_hidden(words, true);
}

std::string Session::unhide(const Words& words) {
    return set_hidden(words, false);
}

std::string Session::set_hidden(const Words& words, bool hidden) {
    node_named(words[1]).set_hidden(hidden);
    return shown(words[1]) + (hidden ? " is hidden" : " is shown");
}

std::string Session::move(const Words& words) {
    MemoryNode& node = node_named(words[1]);
    const Point3 place(parse_coordinate(words[2]), parse_coordinate(words[3]),
                       parse_coordinate(words[4]));
    Interval valid = FOREVER;
    Matrix3 parent_from_node = node.local_transform().at(host_.time(), valid);
    parent_from_node.SetRow(3, place);
    node.set_local_transform(memhost::LocalTransform(parent_from_node));
    return shown(words[1]) + " stands at " + words[2] + " " + words[3] + " " + words[4];
}

std::string Session::remove(const Words& words) {
    host_.delete_node(node_named(words[1]));
    return shown(words[1]) + " is deleted";
}

std::string Session::rename(const Words& words) {
    node_named(words[1]).set_name(memhost::units_from_utf8(words[2]));
    return shown(words[1]) + " is now " + shown(words[2]);
}

std::string Session::go_to_frame(const Words& words) {
    const std::optional<int> frame = parse_frame(words[1]);
    if (!frame) {
        throw std::invalid_argument(shown(words[1]) + " is not a frame number");
    }
    host_.SetTime(*frame * host_.ticks_per_frame());
    return "frame " + std::to_string(*frame);
}

std::string Session::list_nodes(const Words&) {
    std::string list;
    std::vector<std::pair<MemoryNode*, size_t>> waiting = {{&host_.root(), 0}};
    while (!waiting.empty()) {
        const auto [node, depth] = waiting.back();
        waiting.pop_back();
        if (node->parent() != nullptr) {
            list += (list.empty() ? "" : "\n") + std::string(2 * depth, ' ') +
                    vsqinfo::display_text(memhost::utf8_from_units(node->name())) +
                    (node->IsNodeHidden() ? " (hidden)" : "");
        }
        const std::vector<MemoryNode*>& children = node->children();
        for (auto child = children.rbegin(); child != children.rend(); ++child) {
            waiting.emplace_back(*child, depth + 1);
        }
    }
    return list.empty() ? "  there are no nodes" : list;
}

std::string Session::settings(const Words&) {
    // At the terminal, the dialog reads standard input. In a pipe, those are the next commands.
    if (!input_is_terminal()) {
        std::string list = list_settings(plugin_.settings_folder());
        list.pop_back();
        return list;
    }
    throw_if_told(plugin_.settings());
    return "";
}

std::string Session::list_commands(const Words&) {
    return help();
}

std::string Session::quit(const Words&) {
    is_over_ = true;
    return "";
}

std::vector<MemoryNode*> Session::named_nodes() const {
    std::vector<MemoryNode*> nodes;
    std::vector<MemoryNode*> waiting(host_.root().children().rbegin(),
                                     host_.root().children().rend());
    while (!waiting.empty()) {
        nodes.push_back(waiting.back());
        waiting.pop_back();
        const std::vector<MemoryNode*>& children = nodes.back()->children();
        waiting.insert(waiting.end(), children.rbegin(), children.rend());
    }
    return nodes;
}

MemoryNode& Session::node_named(const std::string& name) const {
    const std::wstring units = memhost::units_from_utf8(name);
    for (MemoryNode* node : named_nodes()) {
        if (node->name() == units) {
            return *node;
        }
    }
    throw std::invalid_argument("no node is named " + shown(name) + " (nodes lists the nodes)");
}

Completion Session::complete(const std::string& line) const {
    const CommandLineWords typed = split_command(line);
    if (typed.is_in_comment) {
        return {};
    }
    const size_t position = typed.words.size() - (typed.is_in_word ? 1 : 0);
    std::vector<std::string> choices;
    for (const Command& command : kCommands) {
        if (position == 0) {
            choices.push_back(command.name);
        } else if (typed.words[0] == command.name) {
            const Words wanted = command_words(command.arguments);
            if (position <= wanted.size() && wanted[position - 1] == "NODE") {
                for (const MemoryNode* node : named_nodes()) {
                    choices.push_back(memhost::utf8_from_units(node->name()));
                }
            }
        }
    }
    const size_t begin = typed.is_in_word ? typed.last_begin : line.size();
    return complete_word(line.substr(begin), typed.is_in_word ? typed.words.back() : "",
                         typed.is_in_quotes, std::move(choices));
}

int run_session(Session& session) {
    const bool has_person = input_is_terminal();
    const std::unique_ptr<LineEditor> editor = open_line_editor(
        kPrompt, [&session](const std::string& line) { return session.complete(line); });
    const auto read = [&](std::string& line) {
        if (editor) {
            return editor->read(line);
        }
        if (has_person) {
            std::fputs(kPrompt, stdout);
            std::fflush(stdout);
        }
        return static_cast<bool>(std::getline(std::cin, line));
    };
    bool failed = false;
    size_t number = 0;
    for (std::string line; !session.is_over() && read(line);) {
        ++number;
        try {
            const std::string answer = session.carry_out(line);
            if (!answer.empty()) {
                std::printf("%s\n", answer.c_str());
                std::fflush(stdout);
            }
            std::fputs(session.take_remarks().c_str(), stderr);
        } catch (const std::exception& error) {
            failed = true;
            const std::string place = has_person ? "" : "line " + std::to_string(number) + ": ";
            std::fputs(session.take_remarks().c_str(), stderr);
            std::fprintf(stderr, "vsqexport: %s%s\n", place.c_str(), error.what());
        }
    }
    if (has_person) {
        return 0;
    }
    return failed ? 1 : session.has_strict_losses() ? 3 : 0;
}

}  // namespace vsqexport
