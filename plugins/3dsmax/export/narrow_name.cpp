#include "plugins/3dsmax/export/narrow_name.h"

std::string NarrowName(const wchar_t* text) {
    bool is_faithful = true;
    return NarrowName(text, is_faithful);
}

std::string NarrowName(const wchar_t* text, bool& is_faithful) {
    constexpr size_t kLongestName = 1023;
    std::string name;
    is_faithful = true;
    if (text == nullptr) {
        return name;
    }
    wchar_t all_bits = 0;
    const wchar_t* unit = text;
    for (; *unit != 0 && name.size() < kLongestName; ++unit) {
        all_bits = static_cast<wchar_t>(all_bits | *unit);
        name += static_cast<char>(static_cast<unsigned char>(*unit & 0xff));
    }
    is_faithful = *unit == 0 && (all_bits & ~0xff) == 0;
    return name;
}
