#include "standins/host/app/arguments.h"

namespace app {

std::vector<std::string> utf8_arguments(int argc, char** argv) {
    return {argv + 1, argv + argc};
}

}  // namespace app
