#include <unistd.h>

#include "tools/vsqexport/terminal.h"

namespace vsqexport {

bool input_is_terminal() {
    return isatty(STDIN_FILENO) != 0;
}

bool error_output_is_terminal() {
    return isatty(STDERR_FILENO) != 0;
}

}  // namespace vsqexport
