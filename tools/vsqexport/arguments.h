#pragma once

#include <string>
#include <vector>

namespace vsqexport {

/// The arguments behind the program's name, as UTF-8 on every system. From then on a console of
/// Windows takes what is printed as UTF-8, too.
std::vector<std::string> utf8_arguments(int argc, char** argv);

}  // namespace vsqexport
