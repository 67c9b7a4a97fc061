#pragma once

#include <cstdint>
#include <string>

namespace platform {

/// The system's own message box, or standard error on a system without one.
void show_native_message_box(void* parent, const std::string& text, const std::string& title,
                             std::uint32_t style);

}  // namespace platform
