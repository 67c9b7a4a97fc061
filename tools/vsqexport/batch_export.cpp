#include "tools/vsqexport/batch_export.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <random>
#include <stdexcept>
#include <system_error>
#include <thread>

#include "platform/folders.h"
#include "tools/vsqexport/batch_files.h"
#include "tools/vsqexport/own_resources.h"
#include "tools/vsqexport/process_pool.h"
#include "tools/vsqexport/unfinished_file.h"
#include "tools/vsqinfo/display_text.h"

namespace vsqexport {

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;
using vsqinfo::display_text;

constexpr int kLossesStatus = 3;
constexpr int kCancelledStatus = 130;
const std::string kProgramName = "vsqexport: ";

// The folder of what the processes need while they run.
class ScratchFolder {
public:
    ScratchFolder()
        : path_(fs::temp_directory_path() /
                ("vsqexport-batch-" + std::to_string(std::random_device()()))) {
        fs::create_directory(path_);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    fs::path file(std::size_t index, const char* ending) const {
        return path_ / (std::to_string(index) + ending);
    }

private:
    fs::path path_;
};

// A report that is written at the end. A file that can't be written is noticed at the start.
class ReportFile {
public:
    explicit ReportFile(const std::string& path) : path_(path) {
        if (!path.empty()) {
            file_ = std::make_unique<UnfinishedFile>(path);
            errno = 0;
            stream_.open(fs::u8path(file_->path()), std::ios::binary);
            check();
        }
    }
    void write(const std::string& text) {
        if (file_) {
            errno = 0;
            stream_ << text;
            stream_.close();
            check();
            file_->finish();
        }
    }

private:
    void check() const {
        if (!stream_) {
            throw std::runtime_error(display_text(path_) + ": the report cannot be written: " +
                                     std::generic_category().message(errno));
        }
    }

    std::string path_;
    std::unique_ptr<UnfinishedFile> file_;
    std::ofstream stream_;
};

std::string contents_of(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string last_line(std::string text) {
    text.erase(text.find_last_not_of("\r\n") + 1);
    return text.substr(text.find_last_of('\n') + 1);
}

std::string without_start(const std::string& text, const std::string& start) {
    return text.compare(0, start.size(), start) == 0 ? text.substr(start.size()) : text;
}

// The codes of what was lost or changed, with their counts.
std::string codes_of(const Json& report) {
    std::vector<std::string> codes;
    std::map<std::string, std::uint64_t> counts;
    for (const Json& note : report.value("notes", Json::array())) {
        const std::string code = note.value("code", "");
        if (note.value("severity", "") == "chosen") {
            continue;
        }
        if (counts.count(code) == 0) {
            codes.push_back(code);
        }
        counts[code] += note.value("count", std::uint64_t{1});
    }
    std::string text;
    for (const std::string& code : codes) {
        text += (text.empty() ? "" : ", ") + code +
                (counts[code] > 1 ? " " + std::to_string(counts[code]) : "");
    }
    return text;
}

// A process that was killed leaves its unfinished scene.
void remove_unfinished(const std::string& target, fs::file_time_type since) {
    const fs::path path = fs::u8path(target);
    const std::string start = "." + path.stem().u8string() + ".";
    const std::string end = ".part" + path.extension().u8string();
    std::error_code error;
    std::vector<fs::path> left;
    for (fs::directory_iterator i(path.parent_path(), error), none; !error && i != none;
         i.increment(error)) {
        const std::string name = i->path().filename().u8string();
        std::error_code ignored;
        if (name.size() > start.size() + end.size() && name.compare(0, start.size(), start) == 0 &&
            name.compare(name.size() - end.size(), end.size(), end) == 0 &&
            name.find_first_not_of("0123456789", start.size()) == name.size() - end.size() &&
            fs::last_write_time(i->path(), ignored) >= since) {
            left.push_back(i->path());
        }
    }
    for (const fs::path& one : left) {
        fs::remove(one, error);
    }
}

class Batch {
public:
    Batch(const BatchOptions& options, const ReportOptions& report)
        : options_(options),
          report_(report),
          files_(batch_files(options.sources, options.out_folder)),
          results_(files_.size()),
          resources_(files_.size()) {}

    BatchResult run();

private:
    ProcessCall call_of(std::size_t index);
    void end(std::size_t index, const EndedProcess& process);
    void take_result(std::size_t index, const EndedProcess& process);
    void record(std::size_t index, const char* outcome, const std::string& error);
    void show(std::size_t index, const std::string& details, bool is_failure);
    Json all_results(double seconds, int jobs) const;

    const BatchOptions& options_;
    const ReportOptions& report_;
    std::vector<BatchFile> files_;
    std::vector<Json> results_;
    std::vector<std::unique_ptr<OwnResources>> resources_;  // of processes that run
    std::map<std::size_t, fs::file_time_type> began_;
    ScratchFolder scratch_;
    std::map<std::string, int> outcomes_;
    std::size_t shown_ = 0;
    int strict_ = 0;
};

ProcessCall Batch::call_of(std::size_t index) {
    const BatchFile& file = files_[index];
    std::error_code error;
    const fs::path folder = fs::u8path(file.target).parent_path();
    fs::create_directories(folder, error);
    if (error) {
        throw std::runtime_error(display_text(folder.u8string()) +
                                 ": cannot be made: " + error.message());
    }
    // The system's time of files can be a little behind the clock.
    began_[index] = fs::file_time_type::clock::now() - std::chrono::seconds(1);
    resources_[index] =
        std::make_unique<OwnResources>(file.resources, scratch_.file(index, ".config"));
    ProcessCall call;
    call.words = {platform::program_folder() + "/vsqexport", "export", "--json"};
    call.words.insert(call.words.end(), options_.passed_on.begin(), options_.passed_on.end());
    call.words.insert(call.words.end(), {"--", file.source, file.target});
    call.environment = resources_[index]->environment();
    call.output_file = scratch_.file(index, ".out").u8string();
    call.error_file = scratch_.file(index, ".err").u8string();
    return call;
}

void Batch::end(std::size_t index, const EndedProcess& process) {
    results_[index]["seconds"] = process.seconds;
    take_result(index, process);
    const std::string outcome = results_[index]["outcome"];
    if (outcome != "whole" && outcome != "lossy") {
        resources_[index]->drop_new_files();
        remove_unfinished(files_[index].target, began_[index]);
    }
    resources_[index].reset();
    std::error_code ignored;
    // Folders that nothing has come into. `remove` fails on others; those of processes that run
    // hold their resources.
    const fs::path top = fs::u8path(options_.out_folder);
    for (fs::path folder = fs::u8path(files_[index].target).parent_path();
         folder != top && folder.has_relative_path() && fs::remove(folder, ignored);
         folder = folder.parent_path()) {
    }
    for (const char* ending : {".out", ".err"}) {
        fs::remove(scratch_.file(index, ending), ignored);
    }
}

void Batch::take_result(std::size_t index, const EndedProcess& process) {
    using How = EndedProcess::How;
    const std::string code = std::to_string(process.code);
    if (process.how == How::kTimedOut) {
        char limit[32];
        std::snprintf(limit, sizeof limit, "%g", options_.timeout);
        return record(index, "failed", std::string("no end in ") + limit + " seconds");
    }
    if (process.how == How::kNotStarted) {
        const std::string reason = std::generic_category().message(process.code);
        return record(index, "failed", "its process can't be started: " + reason);
    }
    if (process.how == How::kInterrupted) {
        return record(index, "cancelled", "cancelled");
    }
    if (process.how == How::kKilled) {
        return record(index, "failed", "crashed with signal " + code);
    }
    const Json printed =
        Json::parse(contents_of(scratch_.file(index, ".out")), nullptr, false);  // may be nothing
    const bool is_read = printed.is_object();
    if (is_read) {
        results_[index]["summary"] = printed.value("summary", Json());
        results_[index]["report"] = printed.value("report", Json::object());
    }
    const bool has_losses = process.code == kLossesStatus;
    if (is_read && (process.code == 0 || has_losses)) {
        strict_ += has_losses ? 1 : 0;
        const bool is_whole = codes_of(results_[index]["report"]).empty();
        return record(index, is_whole ? "whole" : "lossy", "");
    }
    std::string error = is_read ? printed.value("error", "") : std::string();
    if (error.empty()) {
        error = without_start(last_line(contents_of(scratch_.file(index, ".err"))), kProgramName);
    }
    record(index, process.code == kCancelledStatus ? "cancelled" : "failed",
           error.empty() ? "ended with status " + code : error);
}

void Batch::record(std::size_t index, const char* outcome, const std::string& error) {
    results_[index]["outcome"] = outcome;
    ++outcomes_[outcome];
    if (!error.empty()) {
        results_[index]["error"] = error;
        show(index, ": " + without_start(error, files_[index].source + ": "), true);
        return;
    }
    const std::string codes = codes_of(results_[index]["report"]);
    show(index, " -> " + display_text(files_[index].target) + (codes.empty() ? "" : ": " + codes),
         false);
}

void Batch::show(std::size_t index, const std::string& details, bool is_failure) {
    ++shown_;
    if (!is_failure && (report_.quiet || report_.json)) {
        return;
    }
    const std::string outcome = results_[index]["outcome"];
    const std::string total = std::to_string(files_.size());
    std::FILE* const stream = is_failure ? stderr : stdout;
    std::fprintf(stream, "[%*zu/%s] %-9s %s%s\n", static_cast<int>(total.size()), shown_,
                 total.c_str(), outcome.c_str(), display_text(files_[index].source).c_str(),
                 details.c_str());
    std::fflush(stream);
}

Json Batch::all_results(double seconds, int jobs) const {
    Json files = Json::array();
    for (std::size_t i = 0; i < files_.size(); ++i) {
        Json one = {{"source", files_[i].source}, {"target", files_[i].target}};
        one.update(results_[i]);
        files.push_back(std::move(one));
    }
    return {{"report", "vsqexport-batch"}, {"version", 1},
            {"seconds", seconds},          {"jobs", jobs},
            {"counts", outcomes_},         {"files", std::move(files)}};
}

BatchResult Batch::run() {
    for (const BatchFile& file : files_) {
        check_report_file(report_, file.source, file.target);
    }
    std::error_code error;
    fs::create_directories(fs::u8path(options_.out_folder), error);
    if (error) {
        throw std::runtime_error(display_text(options_.out_folder) +
                                 ": cannot be made: " + error.message());
    }
    ReportFile report(report_.file);
    const auto start = std::chrono::steady_clock::now();
    const int processors = static_cast<int>(std::thread::hardware_concurrency());
    const int jobs = options_.jobs > 0 ? options_.jobs : std::max(processors, 1);
    run_processes(
        files_.size(), jobs, options_.timeout,
        [this](std::size_t index) -> std::optional<ProcessCall> {
            try {
                return call_of(index);
            } catch (const std::exception& failure) {
                record(index, "failed", failure.what());
                return std::nullopt;
            }
        },
        [this](std::size_t index, const EndedProcess& process) { end(index, process); });
    for (Json& result : results_) {
        if (result.is_null()) {
            result = {{"outcome", "cancelled"}, {"error", "never began"}};
            ++outcomes_["cancelled"];
        }
    }
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;

    const std::string json =
        all_results(taken.count(), jobs).dump(1, ' ', false, Json::error_handler_t::replace) + "\n";
    if (report_.json) {
        std::fputs(json.c_str(), stdout);
    } else if (!report_.quiet) {
        std::string counts;
        for (const char* outcome : {"whole", "lossy", "failed", "cancelled"}) {
            if (const int count = outcomes_[outcome]; count > 0) {
                counts += (counts.empty() ? "" : ", ") + std::to_string(count) + " " + outcome;
            }
        }
        std::printf("%zu %s in %.1f s: %s\n", files_.size(), files_.size() == 1 ? "file" : "files",
                    taken.count(), counts.c_str());
    }
    report.write(json);
    return {outcomes_["failed"], outcomes_["cancelled"], strict_};
}

}  // namespace

BatchResult export_batch(const BatchOptions& options, const ReportOptions& report) {
    return Batch(options, report).run();
}

}  // namespace vsqexport
