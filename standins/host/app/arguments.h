#pragma once

#include <string>
#include <vector>

namespace app {

/// The arguments behind the program's name, as UTF-8 on every system.
std::vector<std::string> utf8_arguments(int argc, char** argv);

/// True if a person types standard input on a terminal.
bool input_is_terminal();

/// True if a person watches standard error on a terminal.
bool error_output_is_terminal();

}  // namespace app
