#pragma once

#include <chrono>
#include <string>

namespace vsqexport {

/// One line on a terminal that shows how far an export is: `[=====     ]  50 % Box01`.
class ProgressBar {
public:
    /// Draws nothing unless `visible`.
    explicit ProgressBar(bool visible) : visible_(visible) {}
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    /// Wipes the line, so that what is printed next stands alone.
    ~ProgressBar();

    /// Draws at most some twenty times a second.
    void update(int percent, const std::wstring& title);

private:
    bool visible_;
    bool drawn_ = false;
    std::chrono::steady_clock::time_point last_draw_;
};

}  // namespace vsqexport
