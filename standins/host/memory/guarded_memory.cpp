#include "standins/host/memory/guarded_memory.h"

#include <new>

#if defined(_WIN32) || defined(__SANITIZE_ADDRESS__)
#define MEMHOST_PLAIN_MEMORY
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define MEMHOST_PLAIN_MEMORY
#endif
#endif

#ifndef MEMHOST_PLAIN_MEMORY
#include <sys/mman.h>

#include <deque>
#include <mutex>
#include <utility>
#endif

namespace memhost {

#ifdef MEMHOST_PLAIN_MEMORY

void* GuardedMemory::operator new(std::size_t size) {
    return ::operator new(size);
}

void GuardedMemory::operator delete(void* memory, std::size_t) {
    ::operator delete(memory);
}

#else

namespace {

// Only so many dead objects stay guarded, since a process can't have more than some ten thousand
// pieces of memory.
constexpr std::size_t kMostDead = 1000;

}  // namespace

void* GuardedMemory::operator new(std::size_t size) {
    void* memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
        throw std::bad_alloc();
    }
    return memory;
}

void GuardedMemory::operator delete(void* memory, std::size_t size) {
    static std::mutex mutex;
    static std::deque<std::pair<void*, std::size_t> > dead;
    mprotect(memory, size, PROT_NONE);
    const std::lock_guard<std::mutex> lock(mutex);
    dead.emplace_back(memory, size);
    if (dead.size() > kMostDead) {
        munmap(dead.front().first, dead.front().second);
        dead.pop_front();
    }
}

#endif

}  // namespace memhost
