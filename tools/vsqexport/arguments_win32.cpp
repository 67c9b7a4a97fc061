#include <windows.h>
// shellapi.h needs windows.h before it.
#include <shellapi.h>

#include "standins/host/memory/host_text.h"
#include "tools/vsqexport/arguments.h"

namespace vsqexport {

// `argv` is in the system's code page, which can't represent every name.
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

}  // namespace vsqexport
