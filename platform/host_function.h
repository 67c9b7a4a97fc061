#pragma once

namespace platform {

/// The function that this process's program exports under `name`, or null. A program without
/// windows can so take over what a library would otherwise show.
void* find_host_function(const char* name);

}  // namespace platform
