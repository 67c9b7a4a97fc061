#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <functional>
#include <set>
#include <stdexcept>

#include "tools/vsqexport/arguments.h"
#include "tools/vsqexport/batch_export.h"
#include "tools/vsqexport/export_target.h"
#include "tools/vsqexport/exporting_commands.h"
#include "tools/vsqexport/frame_number.h"
#include "tools/vsqexport/interruption.h"
#include "tools/vsqexport/picture_program.h"
#include "tools/vsqexport/progress_bar.h"
#include "tools/vsqexport/reported_command.h"
#include "tools/vsqexport/scene_collection.h"
#include "tools/vsqexport/scene_options.h"
#include "tools/vsqexport/scene_source.h"
#include "tools/vsqexport/session.h"
#include "tools/vsqexport/settings_file.h"

// The headless host: scenes come from model files or from code, and the command line replaces menus
// and dialogs.

namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kMisused = 2;
constexpr int kLost = 3;         // with the option --strict
constexpr int kCancelled = 130;  // the status that a shell reports for a program ended by Ctrl-C

struct CommandLine {
    vsqexport::SceneOptions options;
    std::string target;
    std::string picture;
    std::string piece;
    vsqexport::AnimationOptions animation;
    vsqexport::BatchOptions batch;  // without what is in the members above
    std::vector<std::string> more_scenes;
    bool force = false;
    std::vector<std::string> collected;  // scenes, then the folder
    vsqexport::ReportOptions report;
};

void complain(const std::string& text) {
    std::fprintf(stderr, "vsqexport: %s\n", text.c_str());
}

// The plug-in starts with the host, before there is a scene.
struct Host {
    explicit Host(const vsqexport::SceneOptions& options)
        : settings(options.settings), scene(options.strict_host) {}

    vsqexport::SettingsOfRun settings;
    memhost::SceneBuilder scene;
    vsqexport::PluginCommands plugin{scene.host(), settings.folder()};
};

vsqexport::LossReport open_scene(Host& host, const CommandLine& command,
                                 const vsqexport::Interruption& interruption) {
    vsqexport::LossReport losses =
        vsqexport::open_scene(command.options, host.scene, command.report.quiet);
    if (interruption.happened()) {
        throw vsqexport::Cancelled("cancelled, nothing was written");
    }
    return losses;
}

// Opens the scene, runs an exporting command and prints what it tells.
int run_and_tell(Host& host, const CommandLine& command, const char* name,
                 const std::function<std::optional<vsqexport::ExportReport>()>& exporting) {
    const vsqexport::Interruption interruption(host.scene.host());
    vsqexport::LossReport imported;
    const vsqexport::ToldResult told =
        vsqexport::run_reported(command.report, host.plugin, name, imported, [&] {
            imported = open_scene(host, command, interruption);
            return exporting();
        });
    std::fputs(told.output.c_str(), stdout);
    std::fflush(stdout);
    std::fputs(told.remarks.c_str(), stderr);
    if (told.failure) {
        std::rethrow_exception(told.failure);
    }
    return command.report.strict && told.has_losses ? kLost : kDone;
}

int run_batch(const CommandLine& command) {
    vsqexport::BatchOptions batch = command.batch;
    batch.sources = {command.options.scene};
    if (!command.target.empty()) {
        batch.sources.push_back(command.target);
    }
    batch.sources.insert(batch.sources.end(), command.more_scenes.begin(),
                         command.more_scenes.end());
    const vsqexport::BatchResult result = vsqexport::export_batch(batch, command.report);
    if (result.cancelled > 0) {
        return kCancelled;
    }
    return result.failed > 0 ? kFailed : result.strict > 0 ? kLost : kDone;
}

int run_export(const CommandLine& command) {
    if (!command.batch.out_folder.empty()) {
        return run_batch(command);
    }
    if (!command.more_scenes.empty()) {
        throw std::invalid_argument("more than one scene needs --to OUT_DIR");
    }
    const std::string& source = command.options.scene;
    if (command.report.json && vsqexport::is_standard_output(command.target)) {
        throw std::invalid_argument("--json can't be used if the scene goes to standard output");
    }
    vsqexport::check_report_file(command.report, source, command.target);
    Host host(command.options);
    return run_and_tell(host, command, "export", [&] {
        vsqexport::check_export_target(command.target, source, command.force);
        return vsqexport::export_scene(host.scene.host(), host.plugin, command.target,
                                       command.animation.clean);
    });
}

int run_animation(const CommandLine& command) {
    const std::string& source = command.options.scene;
    vsqexport::check_animation_report_file(command.report, source, command.target);
    vsqexport::AnimationOptions options = command.animation;
    if (!command.piece.empty()) {
        options.set_piece(command.piece);
    }
    Host host(command.options);
    return run_and_tell(host, command, "animation", [&] {
        vsqexport::check_animation_target(command.target, source, command.force);
        return vsqexport::export_animation(host.scene.host(), host.plugin, command.target, options);
    });
}

int run_render(const CommandLine& command) {
    vsqexport::check_report_file(command.report, command.options.scene, "");
    Host host(command.options);
    return run_and_tell(host, command, "render", [&] {
        vsqexport::SentScene sent =
            vsqexport::send_scene(host.scene.host(), host.plugin, vsqexport::Sending::kRender);
        sent.report.summary = sent.renderer_text() + ", which was " +
                              (sent.was_started ? "started" : "running") + "\n" +
                              sent.report.summary;
        if (!command.picture.empty()) {
            vsqexport::draw_picture({sent.file}, command.picture);
        }
        return sent.report;
    });
}

int run_session(const CommandLine& command) {
    vsqexport::check_report_file(command.report, command.options.scene, "");
    Host host(command.options);
    vsqexport::Telling telling = {command.report, {}};
    {
        // Each command of the session handles Ctrl-C itself; at the prompt it ends the program.
        const vsqexport::Interruption interruption(host.scene.host());
        telling.imported = open_scene(host, command, interruption);
    }
    vsqexport::Session session(host.scene.host(), host.plugin, command.options.scene, telling);
    return vsqexport::run_session(session);
}

int run_collect(const CommandLine& command) {
    std::vector<std::string> scenes = command.collected;
    if (scenes.size() < 2) {
        throw std::invalid_argument("collect takes one or more scenes and a folder");
    }
    const std::string folder = scenes.back();
    scenes.pop_back();
    const vsqexport::Collected collected = vsqexport::collect_scenes(scenes, folder, command.force);
    std::printf("%s: %llu files, %llu bytes\n", folder.c_str(),
                static_cast<unsigned long long>(collected.files),
                static_cast<unsigned long long>(collected.bytes));
    for (const std::string& line : collected.missing) {
        complain(line);
    }
    return collected.missing.empty() ? kDone : kFailed;
}

// The options of a command line as they can be given to another process, but for `left_out`.
std::vector<std::string> options_of(const CLI::App& command,
                                    const std::set<std::string>& left_out) {
    std::vector<std::string> words;
    for (const CLI::Option* option : command.get_options()) {
        const std::string name = option->get_name();
        if (option->count() == 0 || option->get_positional() || left_out.count(name) > 0) {
            continue;
        }
        if (option->get_items_expected_max() == 0) {
            words.push_back(name);
            continue;
        }
        for (const std::string& value : option->results()) {
            words.push_back(name + "=" + value);
        }
    }
    return words;
}

// Changes the file if there are values. Otherwise opens the dialog, which only a person can answer.
int run_settings(const CommandLine& command) {
    const std::string folder = vsqexport::user_settings_folder();
    if (command.options.settings.empty()) {
        Host host(command.options);
        vsqexport::throw_if_told(host.plugin.settings());
    } else {
        vsqexport::change_settings(folder, command.options.settings);
    }
    std::fputs(vsqexport::list_settings(folder).c_str(), stdout);
    return kDone;
}

CLI::App* add_command(CLI::App& parser, const char* name, const char* description,
                      CommandLine& command) {
    vsqexport::SceneOptions& options = command.options;
    CLI::App* added = parser.add_subcommand(name, description);
    added->add_option("SCENE", options.scene, "A model file, or demo:NAME")->required();
    added
        ->add_option("--set", options.settings,
                     "A setting of the export, as KEY=1 or KEY=0; the keys are " +
                         vsqexport::list_setting_keys())
        ->allow_extra_args(false)
        ->type_name("KEY=VALUE");
    added->add_option("--frames", options.frames, "The animation range")->type_name("FIRST:LAST");
    added
        ->add_option("--fps", options.frames_per_second,
                     "Frames per second; by default those of the scene")
        ->check(CLI::Range(1.0, 4800.0));
    added
        ->add_option("--animation", options.import.animations,
                     "An animation of the model file; by default all that move different things")
        ->allow_extra_args(false)
        ->type_name("NAME");
    added->add_option("--up", options.up, "The axis that is up in the model file")
        ->check(CLI::IsMember({"x", "y", "z"}));
    added->add_option("--scale", options.import.scale, "How many times as large a model becomes")
        ->check(CLI::Range(1e-6, 1e6));
    added->add_flag("--animations", options.lists_animations,
                    "List the animations of the model file, and do nothing else");
    added->add_option("--unit", options.unit, "The unit of the scene: mm, cm, m, ...");
    added
        ->add_option("--strict-host", options.strict_host,
                     "Rules of a host that is as unkind as a genuine one may be")
        ->type_name("RULE,...");
    vsqexport::ReportOptions& report = command.report;
    added->add_option("--report", report.file, "Write a report of what is lost or changed, as JSON")
        ->check([](const std::string& file) {
            return file.empty() ? std::string("the name of the report is empty") : std::string();
        })
        ->type_name("FILE");
    added->add_flag("--quiet", report.quiet, "Print nothing but errors");
    added->add_flag("--strict", report.strict, "Exit with 3 if something is lost");
    added->add_flag("--json", report.json, "Print summary and report as JSON");
    added->footer("Demo scenes:\n" + vsqexport::list_of_demo_scenes() +
                  "\nRules of a strict host; all stands for those that change no scene:\n" +
                  memhost::list_of_strict_rules());
    return added;
}

void describe_command_line(CLI::App& parser, CommandLine& command) {
    parser.name("vsqexport");
    parser.allow_windows_style_options(false);  // a path can begin with a slash
    parser.set_version_flag("--version", "vsqexport " VSQ_VERSION);
    parser.require_subcommand(1);
    CLI::App* exporting =
        add_command(parser, "export", "Write a scene to a .vsq scene file", command);
    exporting->add_option("OUT", command.target, "The scene file; - for standard output");
    exporting->add_option("MORE", command.more_scenes, "With --to, OUT and these are scenes, too");
    exporting
        ->add_option("--to", command.batch.out_folder,
                     "Export each scene, and each model file below a folder, to a file in OUT_DIR")
        ->type_name("OUT_DIR");
    exporting
        ->add_option("--jobs", command.batch.jobs,
                     "With --to, how many at a time; by default one for each processor")
        ->check(CLI::Range(1, 1024));
    exporting
        ->add_option("--timeout", command.batch.timeout,
                     "With --to, end an export that takes longer")
        ->check(CLI::PositiveNumber)
        ->type_name("SECONDS");
    CLI::App* animation = add_command(
        parser, "animation",
        "Write each frame to a .vsq scene file of its own, and a script that renders them",
        command);
    animation->add_option(
        "OUT", command.target,
        "shot.vsq, for example, makes shot0000.vsq, shot0001.vsq, ... and shot.py");
    animation
        ->add_option("--chunk", command.piece,
                     "Only one of N pieces of the range, with a script of its own; K is from 0 to "
                     "N - 1")
        ->type_name("K/N");
    animation->add_option("--step", command.animation.step, "Only every n-th frame")
        ->check(CLI::Range(1, vsqexport::kLargestFrame));
    animation->add_flag("--missing", command.animation.only_missing,
                        "Only frames whose files are not there or not whole");
    for (CLI::App* writing : {exporting, animation}) {
        writing->add_flag("--clean", command.animation.clean,
                          "Remove the mesh files that earlier exports to OUT have made");
        writing->add_flag("--force", command.force, "Replace files that no export has written");
    }
    add_command(parser, "render", "Send a scene to the renderer, which is started if none runs",
                command)
        ->add_option("--picture", command.picture, "Draw what the renderer received to a PNG file")
        ->type_name("FILE");
    parser.add_subcommand("settings", "Open the settings dialog, or change the settings file")
        ->add_option(
            "SETTINGS", command.options.settings,
            "Settings, each as KEY=1 or KEY=0; the keys are " + vsqexport::list_setting_keys())
        ->type_name("KEY=VALUE");
    CLI::App* collect = parser.add_subcommand(
        "collect", "Copy scene files and all files that they name to a folder");
    collect
        ->add_option("FILES", command.collected, "One or more scene files, and at last the folder")
        ->required();
    collect->add_flag("--force", command.force, "Replace files in the folder");
    CLI::App* session =
        add_command(parser, "session", "Open a scene and take commands, one a line", command);
    session->footer("Commands of a session:\n" + vsqexport::Session::help() + "\n\n" +
                    session->get_footer());
    parser.add_subcommand("help", "Show the options of a command: help COMMAND");
}

// `help COMMAND` means `COMMAND --help`.
std::vector<std::string> help_arguments(const CLI::App& parser,
                                        const std::vector<std::string>& arguments) {
    if (arguments.size() == 1) {
        return {"--help"};
    }
    const std::string& name = arguments[1];
    if (parser.get_subcommands([&](const CLI::App* known) { return known->get_name() == name; })
            .empty()) {
        throw CLI::ValidationError("help", "no command is named '" + name + "'");
    }
    return {name, "--help"};
}

int run(const std::string& name, const CommandLine& command) {
    constexpr struct {
        const char* name;
        int (*run)(const CommandLine&);
    } kCommands[] = {
        {"export", run_export},   {"animation", run_animation}, {"render", run_render},
        {"session", run_session}, {"settings", run_settings},   {"collect", run_collect},
    };
    if (command.options.lists_animations) {
        std::fputs(vsqexport::list_of_animations(command.options.scene).c_str(), stdout);
        return kDone;
    }
    if (command.target.empty() && command.batch.out_folder.empty() &&
        (name == "export" || name == "animation")) {
        throw std::invalid_argument("OUT is required (see --help)");
    }
    for (const auto& known : kCommands) {
        if (name == known.name) {
            return known.run(command);
        }
    }
    return kMisused;
}

}  // namespace

int main(int argc, char** argv) {
    CommandLine command;
    CLI::App parser("Exports scenes to the renderer, as the plug-in does in the host.");
    describe_command_line(parser, command);
    try {
        std::vector<std::string> arguments = vsqexport::utf8_arguments(argc, argv);
        if (!arguments.empty() && arguments[0] == "help") {
            arguments = help_arguments(parser, arguments);
        }
        std::reverse(arguments.begin(), arguments.end());  // the parser wants the last one first
        parser.parse(arguments);
    } catch (const CLI::CallForHelp&) {
        std::fputs(parser.help().c_str(), stdout);
        return kDone;
    } catch (const CLI::CallForVersion& version) {
        std::printf("%s\n", version.what());
        return kDone;
    } catch (const CLI::ParseError& error) {
        complain(std::string(error.what()) + " (see --help)");
        return kMisused;
    }

    const CLI::App& chosen = *parser.get_subcommands().front();
    command.batch.passed_on = options_of(
        chosen, {"--to", "--jobs", "--timeout", "--report", "--json", "--quiet", "--animations"});
    if (command.report.quiet) {
        vsqexport::ProgressBar::silence_all();
    }
    try {
        return run(chosen.get_name(), command);
    } catch (const vsqexport::Cancelled& cancelled) {
        complain(cancelled.what());
        return kCancelled;
    } catch (const std::invalid_argument& error) {
        complain(error.what());
        return kMisused;
    } catch (const std::exception& error) {
        complain(error.what());
        return kFailed;
    }
}
