#include "platform/native_message_box.h"

#include <dlfcn.h>

#include <cstdio>

namespace platform {

HostMessageBox* find_host_message_box() {
    return reinterpret_cast<HostMessageBox*>(dlsym(RTLD_DEFAULT, kHostMessageBox));
}

void show_native_message_box(void*, const std::string& text, const std::string& title,
                             std::uint32_t) {
    std::fprintf(stderr, "%s: %s\n", title.c_str(), text.c_str());
}

}  // namespace platform
