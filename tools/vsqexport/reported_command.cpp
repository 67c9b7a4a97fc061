#include "tools/vsqexport/reported_command.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <system_error>

#include "tools/vsqexport/json_text.h"

namespace vsqexport {

namespace {

void write_report_file(const std::string& path, const std::string& json) {
    errno = 0;
    std::ofstream file(std::filesystem::u8path(path), std::ios::binary);
    file << json << '\n';
    file.close();
    if (!file) {
        throw std::runtime_error(
            path + ": the report cannot be written: " + std::generic_category().message(errno));
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
    return std::filesystem::weakly_canonical(std::filesystem::u8path(a), ignored) ==
           std::filesystem::weakly_canonical(std::filesystem::u8path(b), ignored);
}

}  // namespace

void check_report_file(const ReportOptions& options, const std::string& scene,
                       const std::string& target) {
    for (const std::string* file : {&scene, &target}) {
        if (!options.file.empty() && !file->empty() && are_same_file(options.file, *file)) {
            throw std::invalid_argument(options.file + ": the report would replace the scene");
        }
    }
}

ToldResult run_reported(const ReportOptions& options, PluginCommands& plugin,
                        const LossReport& imported,
                        const std::function<std::optional<ExportReport>()>& command) {
    ToldResult told = {};
    LossReport losses = imported;
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
    attempt(true, [&] {
        const std::string json = plugin.take_report();
        if (!json.empty()) {
            losses.add_json(json);
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
