#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vsqexport {

/// A program to be run. Its standard input is empty. Paths and texts are UTF-8.
struct ProcessCall {
    std::vector<std::string> words;                  ///< the program's path and its arguments
    std::map<std::string, std::string> environment;  ///< variables that differ from this process's
    std::string output_file;                         ///< gets its standard output
    std::string error_file;                          ///< gets its standard error
};

struct EndedProcess {
    enum class How {
        kExited,
        kKilled,
        kInterrupted,
        kTimedOut,
        kNotStarted
    } how = How::kNotStarted;
    int code = 0;  ///< the exit status, the signal, or the system's error
    double seconds = 0;
};

/// Runs the calls 0 to `count` - 1, at most `jobs` at a time. `begin` makes a call when its turn
/// has come, and `end` hears how it ended. Where `begin` returns nothing, nothing is run. A process
/// that takes longer than `timeout` seconds is killed; 0 means that none does. Ctrl-C, or another
/// signal that ends programs, is passed on as Ctrl-C to the processes that run; those that don't
/// end soon are killed, at the second signal at once. `end` hears of them all, and no other is
/// started. Returns false in that case.
bool run_processes(std::size_t count, int jobs, double timeout,
                   const std::function<std::optional<ProcessCall>(std::size_t)>& begin,
                   const std::function<void(std::size_t, const EndedProcess&)>& end);

}  // namespace vsqexport
