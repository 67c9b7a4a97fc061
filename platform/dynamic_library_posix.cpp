#include <dlfcn.h>

#include <algorithm>

#include "platform/dynamic_library.h"

namespace platform {

std::optional<DynamicLibrary> DynamicLibrary::open(const std::string& path_utf8) {
    std::string native = path_utf8;
    std::replace(native.begin(), native.end(), '\\', '/');
    void* handle = dlopen(native.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) {
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
