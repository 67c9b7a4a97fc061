#include <io.h>

#include "standins/host/app/terminal.h"

namespace app {

bool input_is_terminal() {
    return _isatty(0) != 0;
}

bool error_output_is_terminal() {
    return _isatty(2) != 0;
}

}  // namespace app
