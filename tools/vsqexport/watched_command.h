#pragma once

#include <functional>
#include <string>
#include <vector>

#include "standins/host/memory/memory_host.h"

namespace vsqexport {

/// How a command of the plug-in ended.
struct Outcome {
    std::vector<std::string> told;  ///< texts about failures
    bool is_cancelled;
    double seconds;
};

/// Runs a command, which returns the texts about failures, with a progress bar on a terminal. A
/// cancel counts only if the plug-in has polled for it. Where the plug-in doesn't poll, it writes
/// the whole scene.
Outcome carry_out(memhost::MemoryHost& host,
                  const std::function<std::vector<std::string>()>& command);

}  // namespace vsqexport
