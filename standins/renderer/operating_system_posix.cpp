#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "standins/renderer/operating_system.h"

namespace velmora {

std::string environment_value(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

std::string user_data_folder() {
    const std::string folder = environment_value("XDG_DATA_HOME");
    return folder.empty() ? environment_value("HOME") + "/.local/share" : folder;
}

std::int64_t own_process_id() {
    return getpid();
}

bool process_is_running(std::int64_t process_id) {
    const pid_t process = static_cast<pid_t>(process_id);
    return process > 0 && process == process_id && (kill(process, 0) == 0 || errno == EPERM);
}

void keep_network_library() {}

}  // namespace velmora
