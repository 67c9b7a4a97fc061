#pragma once

#include <string>

namespace platform {

/// Starts a program without arguments and doesn't wait for it. The program shares no stream and no
/// terminal with this process and outlives it. False if it couldn't be started.
bool launch_program(const std::string& path_utf8);

}  // namespace platform
