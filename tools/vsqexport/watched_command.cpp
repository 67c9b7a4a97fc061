#include "tools/vsqexport/watched_command.h"

#include <chrono>

#include "tools/vsqexport/progress_bar.h"
#include "tools/vsqexport/terminal.h"

namespace vsqexport {

namespace {

// Shows the progress of the host's export during its lifetime.
class ShownProgress {
public:
    explicit ShownProgress(memhost::MemoryHost& host) : host_(host) {
        host_.on_progress(
            [this](int percent, const std::wstring& title) { bar_.update(percent, title); });
    }
    ShownProgress(const ShownProgress&) = delete;
    ShownProgress& operator=(const ShownProgress&) = delete;
    ~ShownProgress() { host_.on_progress({}); }

private:
    memhost::MemoryHost& host_;
    ProgressBar bar_{error_output_is_terminal()};
};

}  // namespace

Outcome carry_out(memhost::MemoryHost& host,
                  const std::function<std::vector<std::string>()>& command) {
    const ShownProgress shown(host);
    const int cancels_before = host.answered_cancels();
    const auto start = std::chrono::steady_clock::now();
    Outcome outcome;
    outcome.told = command();
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    outcome.seconds = taken.count();
    outcome.is_cancelled = host.answered_cancels() > cancels_before;
    return outcome;
}

}  // namespace vsqexport
