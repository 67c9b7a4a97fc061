#include "tools/vsqinfo/utf8_length.h"

namespace vsqinfo {

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
        if ((byte(i) & 0xc0) != 0x80) {
            return 0;
        }
    }
    // Overlong forms, surrogates, and numbers beyond the last code point.
    const bool bad = (first == 0xe0 && byte(1) < 0xa0) || (first == 0xed && byte(1) > 0x9f) ||
                     (first == 0xf0 && byte(1) < 0x90) || (first == 0xf4 && byte(1) > 0x8f);
    return bad ? 0 : length;
}

}  // namespace vsqinfo
