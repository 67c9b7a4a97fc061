#include "platform/dynamic_library.h"

#include <windows.h>

#include "platform/wide_text.h"

namespace platform {

std::optional<DynamicLibrary> DynamicLibrary::open(const std::string& path_utf8,
                                                   std::string* reason) {
    HMODULE module = LoadLibraryW(wide_from_utf8(path_utf8).c_str());
    if (module == nullptr) {
        if (reason != nullptr) {
            *reason = "it can't be loaded, error " + std::to_string(GetLastError());
        }
        return std::nullopt;
    }
    return DynamicLibrary(module);
}

DynamicLibrary::~DynamicLibrary() {
    if (handle_ != nullptr) {
        FreeLibrary(static_cast<HMODULE>(handle_));
    }
}

void* DynamicLibrary::find(const char* name) const {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle_), name));
}

}  // namespace platform
