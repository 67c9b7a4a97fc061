#include "tools/vsqinfo/display_text.h"

#include <cstdio>

namespace vsqinfo {
namespace {

// The length of the UTF-8 sequence at `start`, or 0 if there is none that is well-formed.
std::size_t utf8_length(const std::string& bytes, std::size_t start) {
    const auto byte = [&](std::size_t i) -> unsigned {
        return start + i < bytes.size() ? static_cast<unsigned char>(bytes[start + i]) : 0;
    };
    const unsigned first = byte(0);
    const std::size_t length = first < 0x80   ? 1
                               : first < 0xc2 ? 0
                               : first < 0xe0 ? 2
                               : first < 0xf0 ? 3
                               : first < 0xf5 ? 4
                                              : 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xc0) != 0x80)
            return 0;
    }
    // Overlong forms, surrogates and what lies beyond the last code point.
    const bool bad = (first == 0xe0 && byte(1) < 0xa0) || (first == 0xed && byte(1) > 0x9f) ||
                     (first == 0xf0 && byte(1) < 0x90) || (first == 0xf4 && byte(1) > 0x8f);
    return bad ? 0 : length;
}

// A terminal obeys the control characters from 0x80 to 0x9f as it does those below the blank.
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
