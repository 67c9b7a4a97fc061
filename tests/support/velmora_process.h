#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>

#include "standins/renderer/running_renderers.h"
#include "tests/support/environment_variable.h"
#include "tests/support/temporary_folder.h"

#ifndef _WIN32
#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

/// Polls for some seconds until `holds()` is true; returns whether it became so.
template <typename Condition>
bool comes_to_hold(const Condition& holds) {
    for (int look = 0; look < 1000; ++look) {
        if (holds()) {
            return true;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return false;
}

/// Separates the running renderers of a test, and their scenes, from the user's own.
class RendererFolder {
public:
    std::filesystem::path scenes() const { return folder_.path() / "quoria/scenes"; }

private:
    TemporaryFolder folder_;
    EnvironmentVariable data_{"XDG_DATA_HOME", folder_.path().u8string()};
    EnvironmentVariable windows_data_{"LOCALAPPDATA", folder_.path().u8string()};
};

/// A running renderer. It ends with the object, and if the test dies.
class VelmoraProcess {
public:
    /// `variable` is set only for the renderer. Throws if the renderer isn't announced after some
    /// seconds.
    explicit VelmoraProcess(const std::string& program,
                            const std::string& variable = "VELMORA_VERSION",
                            const std::string& value = "")
        : VelmoraProcess() {
        const EnvironmentVariable its_own(variable, value);
        start(program);
        if (variable != "VELMORA_SILENT" &&
            !comes_to_hold([this] { return announced().has_value(); })) {
            throw std::runtime_error("the renderer does not start");
        }
    }
    VelmoraProcess(const VelmoraProcess&) = delete;
    VelmoraProcess& operator=(const VelmoraProcess&) = delete;
    ~VelmoraProcess();

    std::int64_t id() const { return id_; }

    std::optional<velmora::RunningRenderer> announced() const {
        for (const velmora::RunningRenderer& renderer : velmora::list_running_renderers()) {
            if (renderer.process_id == id_) {
                return renderer;
            }
        }
        return std::nullopt;
    }

    /// This and the following operations throw if the renderer isn't announced.
    velmora::RunningRenderer announcement() const {
        if (const auto renderer = announced()) {
            return *renderer;
        }
        throw std::runtime_error("no renderer is announced for process " + std::to_string(id_));
    }
    int port() const { return announcement().port; }
    /// The scene's number is 0 if there is none.
    velmora::AnnouncedScene newest_scene() const {
        const std::vector<velmora::AnnouncedScene> scenes = announcement().scenes;
        return scenes.empty() ? velmora::AnnouncedScene() : scenes.back();
    }

    /// False if it hasn't ended after some seconds.
    bool wait_for_end() {
        return comes_to_hold([this] { return has_ended(); });
    }

private:
    // The other constructor delegates to this one, so that the destructor runs even if it throws.
    VelmoraProcess() = default;

    void start(const std::string& program);
    bool has_ended();

    std::int64_t id_ = 0;
#ifdef _WIN32
    HANDLE process_ = nullptr;
    HANDLE job_ = nullptr;
#else
    bool has_ended_ = true;
#endif
};

#ifdef _WIN32

inline void VelmoraProcess::start(const std::string& program) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    if (!CreateProcessW(platform::wide_from_utf8(program).c_str(), nullptr, nullptr, nullptr, FALSE,
                        0, nullptr, nullptr, &startup, &started)) {
        throw std::runtime_error("can't start " + program);
    }
    CloseHandle(started.hThread);
    process_ = started.hProcess;
    id_ = started.dwProcessId;
    job_ = CreateJobObjectW(nullptr, nullptr);
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    SetInformationJobObject(job_, JobObjectExtendedLimitInformation, &limits, sizeof limits);
    AssignProcessToJobObject(job_, process_);
}

inline bool VelmoraProcess::has_ended() {
    return WaitForSingleObject(process_, 0) == WAIT_OBJECT_0;
}

inline VelmoraProcess::~VelmoraProcess() {
    TerminateProcess(process_, 1);
    WaitForSingleObject(process_, 5000);
    CloseHandle(process_);
    CloseHandle(job_);
}

#else

inline void VelmoraProcess::start(const std::string& program) {
    const pid_t child = fork();
    if (child == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
        execl(program.c_str(), program.c_str(), static_cast<char*>(nullptr));
        _exit(1);
    }
    if (child < 0) {
        throw std::runtime_error("can't start " + program);
    }
    id_ = child;
    has_ended_ = false;
}

inline bool VelmoraProcess::has_ended() {
    has_ended_ = has_ended_ || waitpid(static_cast<pid_t>(id_), nullptr, WNOHANG) != 0;
    return has_ended_;
}

inline VelmoraProcess::~VelmoraProcess() {
    if (!has_ended()) {
        kill(static_cast<pid_t>(id_), SIGKILL);
        waitpid(static_cast<pid_t>(id_), nullptr, 0);
    }
}

#endif
