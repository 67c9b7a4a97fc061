#include "platform/clock.h"

#include <windows.h>

namespace platform {

std::uint32_t tick_count() {
    return GetTickCount();
}

std::optional<std::string> local_time_of_day() {
    char text[200];
    if (GetTimeFormatA(LOCALE_USER_DEFAULT, 0, nullptr, "HH':'mm':'ss", text, sizeof text) == 0) {
        return std::nullopt;
    }
    return std::string(text);
}

}  // namespace platform
