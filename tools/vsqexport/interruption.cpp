#include "tools/vsqexport/interruption.h"

#include <atomic>
#include <csignal>

namespace vsqexport {

namespace {

std::atomic<memhost::MemoryHost*> interrupted_host{nullptr};
std::atomic<bool> interrupted{false};

extern "C" void on_interrupt(int) {
    std::signal(SIGINT, SIG_DFL);
    interrupted.store(true);
    if (memhost::MemoryHost* host = interrupted_host.load()) {
        host->request_cancel();
    }
}

}  // namespace

Interruption::Interruption(memhost::MemoryHost& host) {
    interrupted.store(false);
    host.SetCancel(FALSE);  // what has cancelled an earlier command can still be set
    interrupted_host.store(&host);
    std::signal(SIGINT, on_interrupt);
}

Interruption::~Interruption() {
    std::signal(SIGINT, SIG_DFL);
    interrupted_host.store(nullptr);
}

bool Interruption::happened() const {
    return interrupted.load();
}

}  // namespace vsqexport
