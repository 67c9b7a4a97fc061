#include "platform/native_message_box.h"

#include <cstdio>

namespace platform {

void show_native_message_box(void*, const std::string& text, const std::string& title,
                             std::uint32_t) {
    std::fprintf(stderr, "%s: %s\n", title.c_str(), text.c_str());
}

}  // namespace platform
