#include "platform/clock.h"

#include <time.h>

namespace platform {

std::uint32_t tick_count() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::uint32_t>(now.tv_sec * 1000 + now.tv_nsec / 1000000);
}

std::optional<std::string> local_time_of_day() {
    const time_t now = time(nullptr);
    tm local{};
    if (localtime_r(&now, &local) == nullptr) {
        return std::nullopt;
    }
    char text[16];
    return std::string(text, strftime(text, sizeof text, "%H:%M:%S", &local));
}

}  // namespace platform
