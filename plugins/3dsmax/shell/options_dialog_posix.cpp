#include <iostream>

#include "plugins/3dsmax/shell/terminal_dialog.h"

namespace Qor {

bool Options::ShowDialog() {
    if (!AskForOptions(*this, std::cin, std::cout)) {
        return false;
    }
    Save();
    return true;
}

}  // namespace Qor
