#include "tools/vsqexport/import/deep_stack.h"

#include <exception>

#ifndef _WIN32
#include <pthread.h>
#endif

namespace vsqexport {

#ifdef _WIN32

void run_on_deep_stack(const std::function<void()>& work) {
    work();
}

#else

namespace {

// Only the pages that are touched take up memory.
constexpr size_t kStackSize = size_t{1} << 30;

struct Work {
    const std::function<void()>& run;
    std::exception_ptr failure;
};

extern "C" void* run_work(void* argument) {
    Work& work = *static_cast<Work*>(argument);
    try {
        work.run();
    } catch (...) {
        work.failure = std::current_exception();
    }
    return nullptr;
}

}  // namespace

void run_on_deep_stack(const std::function<void()>& run) {
    Work work = {run, nullptr};
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, kStackSize);
    pthread_t thread;
    const bool started = pthread_create(&thread, &attributes, run_work, &work) == 0;
    pthread_attr_destroy(&attributes);
    if (!started) {
        run();
        return;
    }
    pthread_join(thread, nullptr);
    if (work.failure) {
        std::rethrow_exception(work.failure);
    }
}

#endif

}  // namespace vsqexport
