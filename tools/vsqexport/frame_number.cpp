#include "tools/vsqexport/frame_number.h"

#include <cstdio>
#include <cstdlib>

namespace vsqexport {

std::optional<int> parse_frame(const std::string& text) {
    int frame = 0;
    char behind = 0;
    if (std::sscanf(text.c_str(), "%7d%c", &frame, &behind) != 1 ||
        std::abs(frame) > kLargestFrame) {
        return std::nullopt;
    }
    return frame;
}

}  // namespace vsqexport
