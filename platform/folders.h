#pragma once

#include <string>

namespace platform {

// These paths are UTF-8 and have no separator at the end.

/// The folder of the running program; empty on failure.
std::string program_folder();

/// The folder where all of the maker's programs keep the user's settings. It may not exist yet.
std::string user_configuration_folder();

}  // namespace platform
