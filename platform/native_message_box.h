#pragma once

#include <cstdint>
#include <string>

#include "platform/message_box.h"

namespace platform {

/// What the program of this process exports in place of a message box, or null.
HostMessageBox* find_host_message_box();

/// The system's own message box, or standard error on a system without one.
void show_native_message_box(void* parent, const std::string& text, const std::string& title,
                             std::uint32_t style);

}  // namespace platform
