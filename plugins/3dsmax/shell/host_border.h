#pragma once

/// Runs a step that the host called for. The host knows no exceptions, and what could be thrown
/// here, a lack of memory, leaves nothing to be told; so the step just ends.
template <typename Step>
void WithoutExceptions(Step&& step) noexcept {
    try {
        step();
    } catch (...) {
    }
}
