#include "tools/vsqexport/reported_command.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <system_error>

#include "tools/vsqexport/animation_files.h"
#include "tools/vsqexport/export_target.h"
#include "tools/vsqexport/json_text.h"
#include "tools/vsqinfo/display_text.h"

namespace vsqexport {

namespace {

void write_report_file(const std::string& path, const std::string& json) {
    errno = 0;
    std::ofstream file(std::filesystem::u8path(path), std::ios::binary);
    file << json << '\n';
    file.close();
    if (!file) {
        throw std::runtime_error(vsqinfo::display_text(path) + ": the report cannot be written: " +
                                 std::generic_category().message(errno));
    }
}

std::string text_of(const std::exception_ptr& failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const std::exception& error) {
        return error.what();
    } catch (...) {
        return "unknown reason";
    }
}

std::string json_object(const std::optional<ExportReport>& report, const LossReport& losses,
                        const std::exception_ptr& failure) {
    std::string json =
        "{\"summary\":" + (report ? report->json : "null") + ",\n\"report\":" + losses.json();
    if (failure) {
        json += ",\n\"error\":" + json_text(text_of(failure));
    }
    return json + "}\n";
}

bool are_same_file(const std::string& a, const std::string& b) {
    std::error_code ignored;
    const auto first = std::filesystem::absolute(std::filesystem::u8path(a), ignored);
    const auto second = std::filesystem::absolute(std::filesystem::u8path(b), ignored);
    return std::filesystem::equivalent(first, second, ignored) ||
           std::filesystem::weakly_canonical(first, ignored) ==
               std::filesystem::weakly_canonical(second, ignored);
}

[[noreturn]] void refuse_replacing(const ReportOptions& options) {
    throw std::invalid_argument(vsqinfo::display_text(options.file) +
                                ": the report would replace the scene");
}

}  // namespace

void check_report_file(const ReportOptions& options, const std::string& scene,
                       const std::string& target) {
    if (options.file.empty()) {
        return;
    }
    if (is_standard_output(options.file)) {
        throw std::invalid_argument(
            "--report takes a file; --json puts the report on standard output");
    }
    if (holds_a_scene(options.file)) {
        refuse_replacing(options);
    }
    for (const std::string* file : {&scene, &target}) {
        if (!file->empty() && are_same_file(options.file, *file)) {
            refuse_replacing(options);
        }
    }
}

void check_animation_report_file(const ReportOptions& options, const std::string& scene,
                                 const std::string& target) {
    check_report_file(options, scene, "");
    if (!options.file.empty() && AnimationFiles(target).include(options.file)) {
        refuse_replacing(options);
    }
}

ToldResult run_reported(const ReportOptions& options, PluginCommands& plugin, const char* name,
                        const LossReport& imported,
                        const std::function<std::optional<ExportReport>()>& command) {
    ToldResult told = {};
    LossReport losses(name);
    std::optional<ExportReport> report;
    // Runs a step unless an earlier one has failed.
    const auto attempt = [&told](bool always, const std::function<void()>& step) {
        try {
            if (always || !told.failure) {
                step();
            }
        } catch (...) {
            told.failure = told.failure ? told.failure : std::current_exception();
        }
    };
    attempt(true, [&] { report = command(); });
    losses.add_shown(imported);
    attempt(true, [&] {
        const std::string json = plugin.take_report();
        if (!json.empty()) {
            losses.add_json(json);
        } else if (told.failure) {
            losses.add_error(text_of(told.failure));  // the plug-in never ran
        }
    });
    attempt(false, [&] {
        if (const std::string failed = losses.failure(); !failed.empty()) {
            throw std::runtime_error(failed);
        }
    });
    std::string unwritten;  // the second failure, if the report can't be written either
    attempt(!options.file.empty(), [&] {
        if (options.file.empty()) {
            return;
        }
        try {
            write_report_file(options.file, losses.json());
        } catch (const std::exception& error) {
            unwritten = told.failure ? std::string("vsqexport: ") + error.what() + "\n" : "";
            throw;
        }
    });

    told.has_losses = losses.has_losses();
    if (options.json) {
        told.output = json_object(report, losses, told.failure);
    } else if (!options.quiet) {
        told.output = report ? report->summary : "";
        told.remarks = (report ? report->warnings : "") + losses.list();
    }
    told.remarks += unwritten;
    return told;
}

}  // namespace vsqexport
