#include "standins/host/app/arguments.h"

#ifdef _WIN32
#include <windows.h>
// windows.h comes first.
#include <io.h>
#include <shellapi.h>

#include "standins/host/memory/host_text.h"
#else
#include <unistd.h>
#endif

namespace app {

#ifdef _WIN32

// `argv` is in the code page of the system, which can't hold every name.
std::vector<std::string> utf8_arguments(int, char**) {
    SetConsoleOutputCP(CP_UTF8);
    int count = 0;
    wchar_t** wide = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) {
        arguments.push_back(memhost::utf8_from_units(wide[i]));
    }
    LocalFree(wide);
    return arguments;
}

bool input_is_terminal() {
    return _isatty(0) != 0;
}

bool error_output_is_terminal() {
    return _isatty(2) != 0;
}

#else

std::vector<std::string> utf8_arguments(int argc, char** argv) {
    return {argv + 1, argv + argc};
}

bool input_is_terminal() {
    return isatty(STDIN_FILENO) != 0;
}

bool error_output_is_terminal() {
    return isatty(STDERR_FILENO) != 0;
}

#endif

}  // namespace app
