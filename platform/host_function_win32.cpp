#include <windows.h>

#include "platform/host_function.h"

namespace platform {

void* find_host_function(const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(nullptr), name));
}

}  // namespace platform
