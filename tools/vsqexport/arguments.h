#pragma once

#include <string>
#include <vector>

namespace vsqexport {

/// The arguments after the program's name, as UTF-8 on every system. On Windows this also sets the
/// console's output to UTF-8.
std::vector<std::string> utf8_arguments(int argc, char** argv);

}  // namespace vsqexport
