#include <dlfcn.h>

#include "platform/host_function.h"

namespace platform {

void* find_host_function(const char* name) {
    return dlsym(RTLD_DEFAULT, name);
}

}  // namespace platform
