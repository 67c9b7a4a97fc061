#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace platform {

/// Milliseconds since some fixed point in the past. Wraps around after about 49 days.
std::uint32_t tick_count();

/// The local time of day in the form "13:51:42", or nullopt on failure.
std::optional<std::string> local_time_of_day();

}  // namespace platform
