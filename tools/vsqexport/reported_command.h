#pragma once

#include <exception>
#include <functional>
#include <optional>
#include <string>

#include "tools/vsqexport/export_report.h"
#include "tools/vsqexport/loss_report.h"
#include "tools/vsqexport/plugin_commands.h"

namespace vsqexport {

/// How the result of an exporting command is told, by the options of the command line.
struct ReportOptions {
    std::string file;     ///< gets the report as JSON, in UTF-8; empty for none
    bool quiet = false;   ///< nothing but errors
    bool strict = false;  ///< a command that failed at something or lost something has failed
    bool json = false;    ///< summary and report as JSON instead of text
};

/// The result of an exporting command.
struct ToldResult {
    std::string output;          ///< for standard output: the summary, or the JSON
    std::string remarks;         ///< for standard error, under the summary
    std::exception_ptr failure;  ///< to be thrown when both have been printed; null on success
    bool has_losses;             ///< whether the strict option makes it a failure
};

/// Throws `std::invalid_argument` with one line if the report would replace one of these files: the
/// scene to be exported, or the file that it is written to. So does a report on standard output.
/// Paths are UTF-8.
void check_report_file(const ReportOptions& options, const std::string& scene,
                       const std::string& target);

/// The same for an animation, which must not lose a frame or its script.
void check_animation_report_file(const ReportOptions& options, const std::string& scene,
                                 const std::string& target);

/// Runs a command of the plug-in and makes its result known. `command` returns the report on what
/// was written, if it can be read back; whatever it throws becomes the failure. So does a note of
/// something that failed, and a report file that can't be written. `name` is that of the command in
/// reports. `imported` has the notes of the importer; `command` may fill it.
ToldResult run_reported(const ReportOptions& options, PluginCommands& plugin, const char* name,
                        const LossReport& imported,
                        const std::function<std::optional<ExportReport>()>& command);

}  // namespace vsqexport
