#include <CLI/CLI.hpp>
#include <chrono>
#include <cstdio>
#include <exception>
#include <optional>
#include <stdexcept>

#include "platform/message_box.h"
#include "plugins/3dsmax/export/options.h"
#include "standins/host/app/arguments.h"
#include "standins/host/app/export_command.h"
#include "standins/host/app/export_report.h"
#include "standins/host/app/export_target.h"
#include "standins/host/app/interruption.h"
#include "standins/host/app/progress_bar.h"
#include "standins/host/app/scene_source.h"

// The headless host: a scene comes from a model file or from code, and a command line takes the
// place of menus and dialogs.

namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kMisused = 2;
constexpr int kCancelled = 130;  // what a shell gives for a program that Ctrl-C ended

struct CommandLine {
    std::string scene;
    std::string target;
    std::vector<std::string> settings;  // KEY=VALUE
    std::string frames;                 // A:B
    int frames_per_second = 30;
    std::string unit;
};

struct UnitName {
    const char* name;
    int unit;
};

constexpr UnitName kUnitNames[] = {
    {"in", UNITS_INCHES},      {"ft", UNITS_FEET},        {"mi", UNITS_MILES},
    {"mm", UNITS_MILLIMETERS}, {"cm", UNITS_CENTIMETERS}, {"m", UNITS_METERS},
    {"km", UNITS_KILOMETERS},
};

void complain(const std::string& text) {
    std::fprintf(stderr, "vsqexport: %s\n", text.c_str());
}

// "1", "on" and "true" are on.
bool parse_switch(const std::string& key, const std::string& value) {
    for (const char* on : {"1", "on", "true"}) {
        if (value == on) {
            return true;
        }
    }
    for (const char* off : {"0", "off", "false"}) {
        if (value == off) {
            return false;
        }
    }
    throw std::invalid_argument("--set " + key + ": '" + value + "' is neither 1 nor 0");
}

void apply_setting(const std::string& setting, Qor::Options& options) {
    const size_t equals = setting.find('=');
    if (equals == std::string::npos) {
        throw std::invalid_argument("--set takes KEY=VALUE, not '" + setting + "'");
    }
    const std::string key = setting.substr(0, equals);
    std::string known;
    for (const Qor::OptionKey& option : Qor::kOptionKeys) {
        if (key == option.key) {
            options.*option.field = parse_switch(key, setting.substr(equals + 1));
            return;
        }
        known += (known.empty() ? "" : ", ") + std::string(option.key);
    }
    throw std::invalid_argument("no setting is named '" + key + "' (there are: " + known + ")");
}

void apply_frames(const std::string& frames, memhost::SceneBuilder& scene) {
    int first = 0;
    int last = 0;
    char behind = 0;
    if (std::sscanf(frames.c_str(), "%d:%d%c", &first, &last, &behind) != 2 || first > last) {
        throw std::invalid_argument("--frames takes FIRST:LAST, not '" + frames + "'");
    }
    scene.animation_frames(first, last);
}

int parse_unit(const std::string& name) {
    std::string known;
    for (const UnitName& unit : kUnitNames) {
        if (name == unit.name) {
            return unit.unit;
        }
        known += (known.empty() ? "" : ", ") + std::string(unit.name);
    }
    throw std::invalid_argument("no unit is named '" + name + "' (there are: " + known + ")");
}

int run_export(const CommandLine& command) {
    memhost::SceneBuilder scene;
    memhost::MemoryHost& host = scene.host();
    const auto options = std::make_shared<Qor::Options>(&host);
    for (const std::string& setting : command.settings) {
        apply_setting(setting, *options);
    }
    const std::optional<int> unit =
        command.unit.empty() ? std::nullopt : std::optional<int>(parse_unit(command.unit));

    const app::Interruption interruption(host);
    app::load_scene(command.scene, scene);
    scene.frames_per_second(command.frames_per_second);
    if (!command.frames.empty()) {
        apply_frames(command.frames, scene);
    }
    if (unit) {
        scene.unit(*unit);
    }
    if (interruption.happened()) {
        complain("cancelled, nothing was written");
        return kCancelled;
    }
    app::check_export_target(command.target, command.scene);

    // Where the host would open a box, the headless one prints a line.
    platform::set_message_box_handler(
        [&command](const std::string& text, const std::string&, std::uint32_t) {
            complain(command.target + ": " + text);
        });
    const auto start = std::chrono::steady_clock::now();
    bool written = false;
    {
        app::ProgressBar bar(app::error_output_is_terminal());
        host.on_progress(
            [&bar](int percent, const std::wstring& title) { bar.update(percent, title); });
        written = app::run_export_command(&host, options, command.target);
        host.on_progress({});
    }
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;

    if (!written) {
        return kFailed;
    }
    if (interruption.happened()) {
        complain("cancelled, " + command.target + " holds only a part of the scene");
        return kCancelled;
    }
    if (app::is_standard_output(command.target) || !app::can_be_read_back(command.target)) {
        return kDone;
    }
    const app::ExportReport report = app::report_on_file(command.target, taken.count());
    std::fputs(report.summary.c_str(), stdout);
    std::fputs(report.warnings.c_str(), stderr);
    return kDone;
}

void describe_command_line(CLI::App& parser, CommandLine& command) {
    parser.name("vsqexport");
    parser.allow_windows_style_options(false);  // a path can begin with a slash
    parser.require_subcommand(1);
    CLI::App* exporting = parser.add_subcommand("export", "Write a scene to a .vsq scene file");
    exporting->add_option("SCENE", command.scene, "A model file, or demo:NAME")->required();
    exporting->add_option("OUT", command.target, "The scene file; - for standard output")
        ->required();
    exporting->add_option("--set", command.settings, "A setting of the export, as KEY=1 or KEY=0")
        ->allow_extra_args(false)
        ->type_name("KEY=VALUE");
    exporting->add_option("--frames", command.frames, "The animation range")
        ->type_name("FIRST:LAST");
    exporting->add_option("--fps", command.frames_per_second, "Frames per second")
        ->check(CLI::Range(1, 4800));
    exporting->add_option("--unit", command.unit, "What a unit of the scene is: mm, cm, m, ...");
    exporting->footer("Demo scenes:\n" + app::list_of_demo_scenes());
}

}  // namespace

int main(int argc, char** argv) {
    CommandLine command;
    CLI::App parser("Hands a scene to the renderer, as the plug-in does in the host.");
    describe_command_line(parser, command);
    try {
        std::vector<std::string> arguments = app::utf8_arguments(argc, argv);
        std::reverse(arguments.begin(), arguments.end());  // as the parser wants them
        parser.parse(arguments);
    } catch (const CLI::CallForHelp&) {
        const auto chosen = parser.get_subcommands();
        std::fputs((chosen.empty() ? parser : *chosen.front()).help().c_str(), stdout);
        return kDone;
    } catch (const CLI::ParseError& error) {
        complain(std::string(error.what()) + " (--help lists what there is)");
        return kMisused;
    }

    try {
        return run_export(command);
    } catch (const std::invalid_argument& error) {
        complain(error.what());
        return kMisused;
    } catch (const std::exception& error) {
        complain(error.what());
        return kFailed;
    }
}
