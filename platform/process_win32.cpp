#include "platform/process.h"

#include <windows.h>

#include "platform/wide_text.h"

namespace platform {

bool launch_program(const std::string& path_utf8) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(wide_from_utf8(path_utf8).c_str(), nullptr, nullptr, nullptr, FALSE, 0,
                        nullptr, nullptr, &startup, &process)) {
        return false;
    }
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return true;
}

}  // namespace platform
