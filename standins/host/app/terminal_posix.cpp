#include <unistd.h>

#include "standins/host/app/terminal.h"

namespace app {

bool input_is_terminal() {
    return isatty(STDIN_FILENO) != 0;
}

bool error_output_is_terminal() {
    return isatty(STDERR_FILENO) != 0;
}

}  // namespace app
