#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace vsqexport {

/// A note of a report, as docs/report.md describes it.
struct LossNote {
    std::string code;
    std::string severity;
    std::string node;
    std::string path;  ///< empty if the note is about no file
    std::string reason;
    std::uint64_t count = 1;
};

/// What a command left out or changed: the notes of the plug-in, and those of the importer.
class LossReport {
public:
    /// Takes the command's name for `json`, which a report of the plug-in replaces.
    explicit LossReport(std::string command) : command_(std::move(command)) {}
    LossReport() = default;

    /// Adds the notes of a report in the plug-in's JSON. Throws `std::runtime_error` with one line
    /// if the text isn't such a report.
    void add_json(const std::string& json);

    /// Adds a note that has already been shown to the user, so that `list` leaves it out.
    void add_shown(LossNote note);

    /// Adds the notes of `other` in the same way.
    void add_shown(const LossReport& other);

    /// Adds that the command ended with this error, which the user sees.
    void add_error(const std::string& error);

    /// One line per code for a person, worst first: severity, code, number of nodes and the first
    /// of them.
    std::string list() const;

    /// What failed, in one line; empty if nothing did.
    std::string failure() const;

    /// Whether anything failed or was lost.
    bool has_losses() const;

    /// The whole report as one JSON object, worst first.
    std::string json() const;

private:
    std::string command_;
    std::vector<LossNote> shown_;
    std::vector<LossNote> notes_;
};

}  // namespace vsqexport
