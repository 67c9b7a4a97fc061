#include "tools/vsqexport/session_history.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace vsqexport {

namespace {

namespace fs = std::filesystem;

// Empty if the user has none.
fs::path state_folder() {
    // Relative paths don't count.
    if (const char* state = std::getenv("XDG_STATE_HOME"); state != nullptr && *state == '/') {
        return state;
    }
    const char* home = std::getenv("HOME");
    return home != nullptr && *home != 0 ? fs::path(home) / ".local/state" : fs::path();
}

// Only the user may read what was typed. One call writes all, so that lines of several sessions
// don't mix. False if not all is written.
bool write(const std::string& file, int flags, const std::string& text) {
    const int descriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | flags, 0600);
    if (descriptor < 0) {
        return false;
    }
    const ssize_t written = ::write(descriptor, text.data(), text.size());
    close(descriptor);
    return written == static_cast<ssize_t>(text.size());
}

}  // namespace

SessionHistory::SessionHistory() {
    const fs::path folder = state_folder();
    if (folder.empty()) {
        return;
    }
    std::error_code error;
    fs::create_directories(folder / "quoria", error);
    file_ = folder / "quoria" / "session-history";
    std::ifstream stream(file_);
    for (std::string line; std::getline(stream, line);) {
        lines_.push_back(line);
    }
    if (lines_.size() > 2 * kMostLines) {
        lines_.erase(lines_.begin(), lines_.end() - static_cast<std::ptrdiff_t>(kMostLines));
        std::string text;
        for (const std::string& line : lines_) {
            text += line + '\n';
        }
        const std::string shorter = file_ + "." + std::to_string(getpid());
        if (write(shorter, O_TRUNC, text)) {
            fs::rename(shorter, file_, error);
        }
    }
}

void SessionHistory::add(const std::string& line) {
    if (!file_.empty() && (lines_.empty() || lines_.back() != line)) {
        lines_.push_back(line);
        write(file_, O_APPEND, line + '\n');
    }
}

}  // namespace vsqexport
