#include "platform/native_message_box.h"

#include <windows.h>

#include "platform/wide_text.h"

namespace platform {

void show_native_message_box(void* parent, const std::string& text, const std::string& title,
                             std::uint32_t style) {
    MessageBoxW(static_cast<HWND>(parent), wide_from_utf8(text).c_str(),
                wide_from_utf8(title).c_str(), style);
}

}  // namespace platform
