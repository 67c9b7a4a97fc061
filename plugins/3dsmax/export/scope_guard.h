#pragma once

#include <functional>
#include <utility>

/// Runs a function when its scope is left, on whatever way, unless it is dismissed before.
class ScopeGuard {
public:
    explicit ScopeGuard(std::function<void()> on_exit) : on_exit_(std::move(on_exit)) {}
    ScopeGuard(const ScopeGuard&) = delete;
    ScopeGuard& operator=(const ScopeGuard&) = delete;
    ~ScopeGuard() {
        if (!dismissed_) {
            on_exit_();
        }
    }

    void dismiss() { dismissed_ = true; }

private:
    std::function<void()> on_exit_;
    bool dismissed_ = false;
};
