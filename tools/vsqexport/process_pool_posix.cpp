#include "tools/vsqexport/process_pool.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <ctime>
#include <optional>
#include <utility>

extern char** environ;

namespace vsqexport {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kGrace(5);  // for a process to clean up after Ctrl-C
constexpr int kEndingSignals[] = {SIGINT, SIGTERM, SIGHUP};

extern "C" void ignore_signal(int) {}

// During its lifetime, signals wait until `next` takes them.
class TakenSignals {
public:
    TakenSignals() {
        sigemptyset(&taken_);
        sigaddset(&taken_, SIGCHLD);
        for (const int signal : kEndingSignals) {
            sigaddset(&taken_, signal);
        }
        sigprocmask(SIG_BLOCK, &taken_, &before_);
        // The system drops a signal that is ignored, even a blocked one.
        struct sigaction action = {};
        action.sa_handler = ignore_signal;
        for (std::size_t i = 0; i < kCount; ++i) {
            sigaction(kSignals[i], &action, &actions_before_[i]);
        }
    }
    TakenSignals(const TakenSignals&) = delete;
    TakenSignals& operator=(const TakenSignals&) = delete;
    ~TakenSignals() {
        for (std::size_t i = 0; i < kCount; ++i) {
            sigaction(kSignals[i], &actions_before_[i], nullptr);
        }
        sigprocmask(SIG_SETMASK, &before_, nullptr);
    }

    // Waits for a signal, up to a point in time if there is one. 0 if none came.
    int next(const std::optional<Clock::time_point>& until) const {
        std::chrono::nanoseconds left = std::chrono::hours(1);
        if (until) {
            left = std::clamp<std::chrono::nanoseconds>(*until - Clock::now(),
                                                        std::chrono::nanoseconds(0), left);
        }
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(left);
        timespec time = {};
        time.tv_sec = static_cast<std::time_t>(seconds.count());
        time.tv_nsec = static_cast<long>((left - seconds).count());
        return std::max(sigtimedwait(&taken_, nullptr, &time), 0);
    }

    // What a new process starts with.
    const sigset_t& mask_before() const { return before_; }

private:
    static constexpr std::size_t kCount = 4;
    static constexpr int kSignals[kCount] = {SIGCHLD, SIGINT, SIGTERM, SIGHUP};

    sigset_t taken_;
    sigset_t before_;
    struct sigaction actions_before_[kCount];
};

// A variable that is set stands before the one of this process.
std::vector<std::string> environment_of(const ProcessCall& call) {
    std::vector<std::string> lines;
    for (const auto& [name, value] : call.environment) {
        lines.push_back(name + "=" + value);
    }
    for (char** line = environ; *line != nullptr; ++line) {
        const std::string text = *line;
        if (call.environment.count(text.substr(0, text.find('='))) == 0) {
            lines.push_back(text);
        }
    }
    return lines;
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> all;
    for (std::string& text : texts) {
        all.push_back(&text[0]);
    }
    all.push_back(nullptr);
    return all;
}

// Starts a process in a group of its own, so that Ctrl-C at the terminal reaches it only through
// this process. Returns the system's error, or 0.
int start(ProcessCall call, const TakenSignals& signals, pid_t& process) {
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    constexpr int kNew = O_WRONLY | O_CREAT | O_TRUNC;
    posix_spawn_file_actions_addopen(&files, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&files, 1, call.output_file.c_str(), kNew, 0600);
    posix_spawn_file_actions_addopen(&files, 2, call.error_file.c_str(), kNew, 0600);

    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t defaults;
    sigemptyset(&defaults);
    for (const int signal : kEndingSignals) {
        sigaddset(&defaults, signal);
    }
    posix_spawnattr_setsigdefault(&attributes, &defaults);
    posix_spawnattr_setsigmask(&attributes, &signals.mask_before());
    posix_spawnattr_setflags(
        &attributes,
        static_cast<short>(POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK));

    std::vector<std::string> environment = environment_of(call);
    const std::vector<char*> words = pointers(call.words);
    const int error = posix_spawn(&process, words[0], &files, &attributes, words.data(),
                                  pointers(environment).data());
    posix_spawn_file_actions_destroy(&files);
    posix_spawnattr_destroy(&attributes);
    return error;
}

struct Running {
    std::size_t index;
    pid_t process;
    Clock::time_point started;
    std::optional<Clock::time_point> deadline;
    bool timed_out = false;
};

EndedProcess ended(const Running& running, int status, bool is_interrupted) {
    EndedProcess result;
    result.seconds = std::chrono::duration<double>(Clock::now() - running.started).count();
    if (running.timed_out) {
        result.how = EndedProcess::How::kTimedOut;
    } else if (WIFEXITED(status)) {
        result.how = EndedProcess::How::kExited;
        result.code = WEXITSTATUS(status);
    } else {
        result.how = is_interrupted ? EndedProcess::How::kInterrupted : EndedProcess::How::kKilled;
        result.code = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    }
    return result;
}

class Pool {
public:
    Pool(double timeout, const std::function<void(std::size_t, const EndedProcess&)>& end)
        : timeout_(timeout), end_(end) {}
    Pool(const Pool&) = delete;
    Pool& operator=(const Pool&) = delete;
    // Only after an exception are there processes left.
    ~Pool() {
        for (const Running& one : running_) {
            kill(-one.process, SIGKILL);
            waitpid(one.process, nullptr, 0);
        }
    }

    std::size_t size() const { return running_.size(); }
    bool is_interrupted() const { return interrupts_ > 0; }

    void add(std::size_t index, ProcessCall call) {
        Running one = {index, 0, Clock::now(), std::nullopt};
        if (timeout_ > 0) {
            one.deadline = one.started + std::chrono::duration_cast<Clock::duration>(
                                             std::chrono::duration<double>(timeout_));
        }
        if (const int error = start(std::move(call), signals_, one.process); error != 0) {
            end_(index, {EndedProcess::How::kNotStarted, error, 0});
            return;
        }
        running_.push_back(one);
    }

    // Waits until a process ends, runs out of time, or a signal comes.
    void wait() {
        std::optional<Clock::time_point> until;
        for (const Running& one : running_) {
            if (one.deadline && !one.timed_out && (!until || *one.deadline < *until)) {
                until = one.deadline;
            }
        }
        const int signal = signals_.next(until);
        if (signal != 0 && signal != SIGCHLD) {
            interrupt();
        }
        for (Running& one : running_) {
            if (one.deadline && !one.timed_out && Clock::now() >= *one.deadline) {
                one.timed_out = !is_interrupted();
                one.deadline.reset();
                kill(-one.process, SIGKILL);
            }
        }
        // One signal can stand for several processes.
        for (std::size_t i = 0; i < running_.size();) {
            int status = 0;
            if (waitpid(running_[i].process, &status, WNOHANG) == 0) {
                ++i;
                continue;
            }
            const Running one = running_[i];
            running_.erase(running_.begin() + static_cast<std::ptrdiff_t>(i));
            end_(one.index, ended(one, status, is_interrupted()));
        }
    }

private:
    void interrupt() {
        ++interrupts_;
        for (Running& one : running_) {
            kill(-one.process, interrupts_ == 1 ? SIGINT : SIGKILL);
            one.deadline = Clock::now() + kGrace;
        }
    }

    TakenSignals signals_;
    double timeout_;
    const std::function<void(std::size_t, const EndedProcess&)>& end_;
    std::vector<Running> running_;
    int interrupts_ = 0;
};

}  // namespace

bool run_processes(std::size_t count, int jobs, double timeout,
                   const std::function<std::optional<ProcessCall>(std::size_t)>& begin,
                   const std::function<void(std::size_t, const EndedProcess&)>& end) {
    Pool pool(timeout, end);
    std::size_t next = 0;
    while (pool.size() > 0 || (next < count && !pool.is_interrupted())) {
        if (next < count && !pool.is_interrupted() &&
            pool.size() < static_cast<std::size_t>(jobs)) {
            const std::size_t index = next++;
            if (std::optional<ProcessCall> call = begin(index)) {
                pool.add(index, std::move(*call));
            }
        } else {
            pool.wait();
        }
    }
    return !pool.is_interrupted();
}

}  // namespace vsqexport
