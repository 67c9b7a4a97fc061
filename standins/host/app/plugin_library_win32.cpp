#include "standins/host/app/plugin_library.h"
#include "standins/host/memory/host_text.h"

namespace app {

std::string own_folder() {
    std::wstring path(MAX_PATH, L'\0');
    DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    while (length == path.size()) {
        path.resize(2 * path.size());
        length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    }
    path.resize(length);
    return memhost::utf8_from_units(path.substr(0, path.find_last_of(L'\\')));
}

void* load_library(const std::string& path_utf8, std::string& reason) {
    HMODULE library = LoadLibraryW(memhost::units_from_utf8(path_utf8).c_str());
    if (library == nullptr) {
        reason = "it can't be loaded, error " + std::to_string(GetLastError());
    }
    return library;
}

void* find_in_library(void* library, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

}  // namespace app
