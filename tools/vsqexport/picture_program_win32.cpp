#include <stdexcept>

#include "tools/vsqexport/picture_program.h"

namespace vsqexport {

void draw_picture(const std::vector<std::string>&, const std::string& picture) {
    throw std::runtime_error(picture + ": pictures are only drawn on Linux");
}

}  // namespace vsqexport
