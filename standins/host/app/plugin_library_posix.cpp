#include <dlfcn.h>

#include <filesystem>

#include "standins/host/app/plugin_library.h"

namespace app {

std::string own_folder() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path().u8string();
}

void* load_library(const std::string& path_utf8, std::string& reason) {
    void* library = dlopen(path_utf8.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        reason = dlerror();
    }
    return library;
}

void* find_in_library(void* library, const char* name) {
    return dlsym(library, name);
}

}  // namespace app
