#include "standins/renderer/operating_system.h"

#include <windows.h>

#include "platform/wide_text.h"

namespace velmora {

std::string environment_value(const char* name) {
    const std::wstring wide_name = platform::wide_from_utf8(name);
    std::wstring value(GetEnvironmentVariableW(wide_name.c_str(), nullptr, 0), L'\0');
    const DWORD size = static_cast<DWORD>(value.size());
    value.resize(GetEnvironmentVariableW(wide_name.c_str(), value.data(), size));
    return platform::utf8_from_wide(value);
}

std::string user_data_folder() {
    return environment_value("LOCALAPPDATA");
}

std::int64_t own_process_id() {
    return GetCurrentProcessId();
}

bool process_is_running(std::int64_t process_id) {
    HANDLE process =
        OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, static_cast<DWORD>(process_id));
    if (process == nullptr) {
        return false;
    }
    DWORD exit_code = 0;
    const bool running = GetExitCodeProcess(process, &exit_code) && exit_code == STILL_ACTIVE;
    CloseHandle(process);
    return running;
}

void keep_network_library() {
    HMODULE kept = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN, L"ws2_32.dll", &kept);
}

}  // namespace velmora
