#include "tools/vsqexport/loss_report.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <utility>

#include "tools/vsqinfo/display_text.h"

namespace vsqexport {

namespace {

using Json = nlohmann::ordered_json;

constexpr char kReport[] = "vsqexport";
constexpr int kVersion = 1;
constexpr std::size_t kNodesInALine = 3;

const char* const kTold = "export-failed";  // the command's error says it
const char* const kFailed = "failed";
const char* const kLost = "lost";
const char* const kWorstFirst[] = {kFailed, kLost, "changed", "chosen"};

std::ptrdiff_t rank_of(const std::string& severity) {
    return std::find(std::begin(kWorstFirst), std::end(kWorstFirst), severity) -
           std::begin(kWorstFirst);
}

std::string text_of(const LossNote& note) {
    std::string text = note.node;
    for (const std::string* part : {&note.path, &note.reason}) {
        if (!part->empty()) {
            text += (text.empty() ? "" : ", ") + *part;
        }
    }
    return vsqinfo::display_text(text);
}

Json json_of(const LossNote& note) {
    Json json = {{"code", note.code}, {"severity", note.severity}, {"node", note.node}};
    if (!note.path.empty()) {
        json["path"] = note.path;
    }
    json["reason"] = note.reason;
    json["count"] = note.count;
    return json;
}

}  // namespace

void LossReport::add_json(const std::string& json) {
    try {
        const Json report = Json::parse(json);
        if (report.at("report") != kReport || report.at("version") != kVersion) {
            throw std::runtime_error("it is of another version");
        }
        command_ = report.at("command").get<std::string>();
        for (const Json& note : report.at("notes")) {
            notes_.push_back({note.at("code"), note.at("severity"), note.at("node"),
                              note.value("path", ""), note.at("reason"), note.at("count")});
        }
    } catch (const std::exception& error) {
        throw std::runtime_error(std::string("the plug-in's report can't be read: ") +
                                 error.what());
    }
}

void LossReport::add_shown(LossNote note) {
    shown_.push_back(std::move(note));
}

void LossReport::add_shown(const LossReport& other) {
    shown_.insert(shown_.end(), other.shown_.begin(), other.shown_.end());
}

void LossReport::add_error(const std::string& error) {
    add_shown({kTold, kFailed, "", "", error, 1});
}

// The plug-in sorts its notes by code, worst first.
std::string LossReport::list() const {
    std::string lines;
    for (auto first = notes_.begin(); first != notes_.end();) {
        std::uint64_t count = 0;
        std::string nodes;
        auto note = first;
        for (; note != notes_.end() && note->code == first->code; ++note) {
            count += note->count;
            if (static_cast<std::size_t>(note - first) < kNodesInALine) {
                nodes += (note == first ? ": " : "; ") + text_of(*note);
            }
        }
        if (static_cast<std::size_t>(note - first) > kNodesInALine) {
            nodes += "; ...";
        }
        if (first->code == kTold) {
            first = note;
            continue;
        }
        lines += "  " + first->severity + " " + first->code + " (" + std::to_string(count) + ")" +
                 nodes + "\n";
        first = note;
    }
    return lines;
}

std::string LossReport::failure() const {
    const auto is_failed = [](const LossNote& note) { return note.severity == kFailed; };
    const auto first = std::find_if(notes_.begin(), notes_.end(), is_failed);
    if (first == notes_.end()) {
        return {};
    }
    const auto others = std::count_if(notes_.begin(), notes_.end(), is_failed) - 1;
    LossNote file_first = *first;
    file_first.node = first->path.empty() ? first->node : "";
    return first->code + ": " + text_of(file_first) +
           (others > 0 ? " (and " + std::to_string(others) + " more)" : "");
}

bool LossReport::has_losses() const {
    const auto is_loss = [](const LossNote& note) {
        return note.severity == kFailed || note.severity == kLost;
    };
    return std::any_of(notes_.begin(), notes_.end(), is_loss) ||
           std::any_of(shown_.begin(), shown_.end(), is_loss);
}

std::string LossReport::json() const {
    std::vector<LossNote> all = notes_;
    all.insert(all.end(), shown_.begin(), shown_.end());
    std::stable_sort(all.begin(), all.end(), [](const LossNote& a, const LossNote& b) {
        return rank_of(a.severity) < rank_of(b.severity);
    });
    Json notes = Json::array();
    for (const LossNote& note : all) {
        notes.push_back(json_of(note));
    }
    const Json report = {{"report", kReport},
                         {"version", kVersion},
                         {"command", command_},
                         {"notes", std::move(notes)}};
    return report.dump(1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace vsqexport
