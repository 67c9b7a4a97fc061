#pragma once

#include <chrono>
#include <string>

namespace vsqexport {

/// Shows the progress of an export on one line of a terminal: `[=====     ]  50 % Box01`.
class ProgressBar {
public:
    /// Draws nothing unless `visible`, and nothing after `silence_all`.
    explicit ProgressBar(bool visible) : visible_(visible && !all_are_silent_) {}
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    /// Clears the line for whatever is printed next.
    ~ProgressBar();

    /// For a user who wants to see nothing but errors.
    static void silence_all() { all_are_silent_ = true; }

    /// Draws at most about twenty times a second.
    void update(int percent, const std::wstring& title);

private:
    static inline bool all_are_silent_ = false;

    bool visible_;
    bool drawn_ = false;
    std::chrono::steady_clock::time_point last_draw_;
};

}  // namespace vsqexport
