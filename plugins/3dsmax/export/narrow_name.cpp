#include "plugins/3dsmax/export/narrow_name.h"

std::string NarrowName(const wchar_t* text) {
    constexpr size_t kLongestName = 1023;
    std::string name;
    if (text == nullptr) {
        return name;
    }
    for (const wchar_t* unit = text; *unit != 0 && name.size() < kLongestName; ++unit) {
        name += static_cast<char>(static_cast<unsigned char>(*unit & 0xff));
    }
    return name;
}
