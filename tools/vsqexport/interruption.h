#pragma once

#include "standins/host/memory/memory_host.h"

namespace vsqexport {

/// During its lifetime, Ctrl-C cancels the host's export, as the Esc key does in the host. A second
/// Ctrl-C ends the program at once.
class Interruption {
public:
    /// Borrows `host`. Only one may exist at a time.
    explicit Interruption(memhost::MemoryHost& host);
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;
    ~Interruption();

    /// True once Ctrl-C has been pressed.
    bool happened() const;
};

}  // namespace vsqexport
