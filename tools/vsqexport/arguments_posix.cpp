#include "tools/vsqexport/arguments.h"

namespace vsqexport {

std::vector<std::string> utf8_arguments(int argc, char** argv) {
    return {argv + 1, argv + argc};
}

}  // namespace vsqexport
