#include <io.h>

#include "tools/vsqexport/terminal.h"

namespace vsqexport {

bool input_is_terminal() {
    return _isatty(0) != 0;
}

bool error_output_is_terminal() {
    return _isatty(2) != 0;
}

}  // namespace vsqexport
