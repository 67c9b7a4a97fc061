#pragma once

#include <cstddef>

namespace memhost {

/// Base class of objects that die while a plug-in may still have a pointer to them. Each has memory
/// of its own, which nobody can read any more once the object is dead: a plug-in that uses such a
/// pointer, or deletes the object twice, ends at once instead of going on with old values.
///
/// With an address sanitizer, and on Windows, the memory is simply freed.
class GuardedMemory {
public:
    static void* operator new(std::size_t size);
    static void operator delete(void* memory, std::size_t size);

protected:
    GuardedMemory() = default;
    ~GuardedMemory() = default;
};

}  // namespace memhost
