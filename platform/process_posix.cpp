#include "platform/process.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

#include "platform/native_path_posix.h"

namespace platform {

namespace {

// Where the child that becomes the program reports that it couldn't.
constexpr int kReport = 3;

// Whatever else the process has open, a socket or the pipe of a test run, stays its own.
constexpr int kUsualFileLimit = 1024;

// Runs in the child, with nothing but calls that are safe between fork and exec.
[[noreturn]] void become(const char* path, int report) {
    setsid();  // Ctrl-C at the terminal is meant for the parent
    const char failed = 1;
    const pid_t program = fork();
    if (program != 0) {
        // The program is to be nobody's child and never a zombie.
        _exit(program < 0 && write(report, &failed, 1) == 1 ? 1 : 0);
    }

    dup2(report, kReport);
    fcntl(kReport, F_SETFD, FD_CLOEXEC);
    const int nowhere = open("/dev/null", O_RDWR);
    for (int stream = 0; stream < kReport; ++stream) {
        dup2(nowhere, stream);
    }
    for (int other = kReport + 1; other < kUsualFileLimit; ++other) {
        close(other);
    }

    char* const arguments[] = {const_cast<char*>(path), nullptr};
    execv(path, arguments);
    _exit(write(kReport, &failed, 1) == 1 ? 1 : 2);
}

}  // namespace

bool launch_program(const std::string& path_utf8) {
    int report[2];
    if (pipe(report) != 0) {
        return false;
    }
    // The program must not keep the pipe open, wherever its ends lie.
    fcntl(report[0], F_SETFD, FD_CLOEXEC);
    fcntl(report[1], F_SETFD, FD_CLOEXEC);
    const std::string path = native_path(path_utf8);
    const pid_t child = fork();
    if (child == 0) {
        become(path.c_str(), report[1]);
    }
    close(report[1]);
    // How the child ended tells nothing in a process that ignores the end of its children.
    while (child > 0 && waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }

    // The report's end of file is the start of the program, which closed the pipe on the way.
    char failed = 0;
    ssize_t size = 0;
    do {
        size = read(report[0], &failed, 1);
    } while (size < 0 && errno == EINTR);
    close(report[0]);
    return child > 0 && size == 0;
}

}  // namespace platform
