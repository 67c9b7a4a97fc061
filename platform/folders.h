#pragma once

#include <string>

namespace platform {

// Paths in UTF-8, without a separator at their end.

/// The folder of the program that runs; empty if the system doesn't tell.
std::string program_folder();

/// Where all of the maker's programs keep what they are told by the user. Nobody has made it yet on
/// a new machine.
std::string user_configuration_folder();

}  // namespace platform
