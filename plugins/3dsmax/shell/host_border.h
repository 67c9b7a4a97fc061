#pragma once

/// Runs a step for the host, which can't handle exceptions. Only a lack of memory can throw here,
/// and that can't be reported either, so the step just ends.
template <typename Step>
void WithoutExceptions(Step&& step) noexcept {
    try {
        step();
    } catch (...) {
    }
}
