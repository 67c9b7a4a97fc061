#include "platform/folders.h"

#include <windows.h>

#include "platform/wide_text.h"

namespace platform {

std::string program_folder() {
    std::wstring path(MAX_PATH, L'\0');
    DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    while (length == path.size()) {
        path.resize(2 * path.size());
        length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    }
    path.resize(length);
    return utf8_from_wide(path.substr(0, path.find_last_of(L'\\')));
}

std::string user_configuration_folder() {
    std::wstring value(GetEnvironmentVariableW(L"APPDATA", nullptr, 0), L'\0');
    value.resize(
        GetEnvironmentVariableW(L"APPDATA", value.data(), static_cast<DWORD>(value.size())));
    return utf8_from_wide(value) + "\\Quoria";
}

}  // namespace platform
