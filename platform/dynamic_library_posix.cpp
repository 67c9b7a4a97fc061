#include <dlfcn.h>

#include "platform/dynamic_library.h"
#include "platform/native_path_posix.h"

namespace platform {

std::optional<DynamicLibrary> DynamicLibrary::open(const std::string& path_utf8,
                                                   std::string* reason) {
    void* handle = dlopen(native_path(path_utf8).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) {
        if (reason != nullptr) {
            *reason = dlerror();
        }
        return std::nullopt;
    }
    return DynamicLibrary(handle);
}

DynamicLibrary::~DynamicLibrary() {
    if (handle_ != nullptr) {
        dlclose(handle_);
    }
}

void* DynamicLibrary::find(const char* name) const {
    return dlsym(handle_, name);
}

}  // namespace platform
