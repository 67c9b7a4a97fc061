#pragma once

#include <chrono>
#include <string>

namespace vsqexport {

/// Shows the progress of an export on one line of a terminal: `[=====     ]  50 % Box01`.
class ProgressBar {
public:
    /// Draws nothing unless `visible`.
    explicit ProgressBar(bool visible) : visible_(visible) {}
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    /// Clears the line for whatever is printed next.
    ~ProgressBar();

    /// Draws at most about twenty times a second.
    void update(int percent, const std::wstring& title);

private:
    bool visible_;
    bool drawn_ = false;
    std::chrono::steady_clock::time_point last_draw_;
};

}  // namespace vsqexport
