#include "platform/process.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

#include "platform/native_path_posix.h"

namespace platform {

namespace {

// The descriptor on which a child process reports that it couldn't start the program.
constexpr int kReport = 3;

// Descriptors up to this limit, such as sockets or the pipe of a test run, aren't passed on to the
// program.
constexpr int kUsualFileLimit = 1024;

// Runs in the child process. Only calls that are safe between fork and exec are allowed here.
[[noreturn]] void start_detached(const char* path, int report) {
    setsid();  // Ctrl-C at the terminal must only reach the parent
    const char failed = 1;
    const pid_t program = fork();
    if (program != 0) {
        // The program is a grandchild, so this process needn't wait for it and it never becomes a
        // zombie.
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
    // The program must not inherit either end of the pipe, whatever its descriptor number is.
    fcntl(report[0], F_SETFD, FD_CLOEXEC);
    fcntl(report[1], F_SETFD, FD_CLOEXEC);
    const std::string path = native_path(path_utf8);
    const pid_t child = fork();
    if (child == 0) {
        start_detached(path.c_str(), report[1]);
    }
    close(report[1]);
    // The child's exit status isn't used: it is lost in a process that ignores SIGCHLD.
    while (child > 0 && waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }

    // End of file means that the program has started, because exec closed the pipe.
    char failed = 0;
    ssize_t size = 0;
    do {
        size = read(report[0], &failed, 1);
    } while (size < 0 && errno == EINTR);
    close(report[0]);
    return child > 0 && size == 0;
}

}  // namespace platform
