#include "platform/dynamic_library.h"

#include <utility>

namespace platform {

DynamicLibrary::DynamicLibrary(DynamicLibrary&& other) noexcept
    : handle_(std::exchange(other.handle_, nullptr)) {}

DynamicLibrary& DynamicLibrary::operator=(DynamicLibrary&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
}

}  // namespace platform
