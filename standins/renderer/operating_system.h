#pragma once

#include <cstdint>
#include <string>

namespace velmora {

/// The value of an environment variable as UTF-8; empty if it isn't set.
std::string environment_value(const char* name);

/// The folder for the user's application data, without a trailing separator.
std::string user_data_folder();

std::int64_t own_process_id();

bool process_is_running(std::int64_t process_id);

/// Keeps the system's network library loaded for the rest of the process, even if the live library
/// is unloaded: under Wine no socket works after the network library has been unloaded and loaded
/// again.
void keep_network_library();

}  // namespace velmora
