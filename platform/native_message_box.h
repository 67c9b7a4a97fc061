#pragma once

#include <cstdint>
#include <string>

#include "platform/message_box.h"

namespace platform {

/// Opens the system's own message box, or prints to standard error on a system that has none.
void show_native_message_box(void* parent, const std::string& text, const std::string& title,
                             std::uint32_t style);

}  // namespace platform
