#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace vsqexport {

/// The lines that a user has typed in sessions, oldest first. They are kept in the file
/// "quoria/session-history" in `$XDG_STATE_HOME` or else in "~/.local/state". Several sessions can
/// add lines at the same time. Failures are ignored: a session works without a history.
class SessionHistory {
public:
    static constexpr size_t kMostLines = 1000;

    /// Reads the file, and cuts it to the latest lines if it has become long.
    SessionHistory();

    const std::vector<std::string>& lines() const { return lines_; }

    /// Adds a line to the file, unless it repeats the one before.
    void add(const std::string& line);

private:
    std::string file_;  // empty if the user has no folder for it
    std::vector<std::string> lines_;
};

}  // namespace vsqexport
