#include "tools/vsqinfo/display_text.h"

#include <cstdio>

#include "tools/vsqinfo/utf8_length.h"

namespace vsqinfo {
namespace {

// A terminal also obeys the control characters from 0x80 to 0x9f.
bool is_control(const std::string& bytes, std::size_t start) {
    const auto first = static_cast<unsigned char>(bytes[start]);
    return first < ' ' || first == 0x7f ||
           (first == 0xc2 && static_cast<unsigned char>(bytes[start + 1]) < 0xa0);
}

}  // namespace

std::string display_text(const std::string& bytes) {
    std::string text;
    for (std::size_t i = 0; i < bytes.size();) {
        const std::size_t length = utf8_length(bytes, i);
        if (length != 0 && !is_control(bytes, i)) {
            text.append(bytes, i, length);
            i += length;
            continue;
        }
        char escape[8];
        std::snprintf(escape, sizeof escape, "\\x%02x", static_cast<unsigned char>(bytes[i]));
        text += escape;
        ++i;
    }
    return text;
}

}  // namespace vsqinfo
