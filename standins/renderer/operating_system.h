#pragma once

#include <cstdint>
#include <string>

namespace velmora {

/// The value of an environment variable as UTF-8; empty if it isn't set.
std::string environment_value(const char* name);

/// Where programs keep the user's data, without a separator at its end.
std::string user_data_folder();

std::int64_t own_process_id();

bool process_is_running(std::int64_t process_id);

/// Keeps the system's own network library for the rest of the process, for a library that comes and
/// goes: under Wine, no socket works once it was unloaded and loaded again.
void keep_network_library();

}  // namespace velmora
