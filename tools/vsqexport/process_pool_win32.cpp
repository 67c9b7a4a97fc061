#include "tools/vsqexport/process_pool.h"

#include <stdexcept>

namespace vsqexport {

// The processes need registries of their own, which Windows doesn't have.
bool run_processes(std::size_t, int, double,
                   const std::function<std::optional<ProcessCall>(std::size_t)>&,
                   const std::function<void(std::size_t, const EndedProcess&)>&) {
    throw std::runtime_error("--to: many scenes at once are only exported on Linux");
}

}  // namespace vsqexport
