#pragma once

#include <string>

namespace platform {

// Paths in UTF-8, without a separator at their end.

/// The folder of the program that runs; empty if the system doesn't say.
std::string program_folder();

/// The folder of the user's configuration, which may not exist yet: "quoria" in `$XDG_CONFIG_HOME`
/// or else in "~/.config", on Windows "Quoria" in `%APPDATA%`.
std::string user_configuration_folder();

}  // namespace platform
