#pragma once

#include "standins/host/memory/memory_host.h"

namespace vsqexport {

/// Turns Ctrl-C into the host's cancel while it lives, as the Esc key is in the host. A second
/// Ctrl-C ends the program at once.
class Interruption {
public:
    /// Borrows `host`. At most one lives at a time.
    explicit Interruption(memhost::MemoryHost& host);
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;
    ~Interruption();

    /// True once Ctrl-C was pressed.
    bool happened() const;
};

}  // namespace vsqexport
