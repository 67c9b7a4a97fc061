#include "standins/host/memory/host_text.h"

#include <cstddef>
#include <cstdint>

#include "standins/host/sdk/strclass.h"

namespace memhost {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kLastCharacter = 0x10FFFF;

bool is_high_surrogate(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
bool is_low_surrogate(char32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

void append_units(char32_t character, std::wstring& units) {
    if (character <= 0xFFFF) {
        units += static_cast<wchar_t>(character);
        return;
    }
    const char32_t offset = character - 0x10000;
    units += static_cast<wchar_t>(0xD800 + (offset >> 10));
    units += static_cast<wchar_t>(0xDC00 + (offset & 0x3FF));
}

// The forms of a character in UTF-8: the number of bytes, the pattern of the lead byte, and the
// first character that needs this number of bytes.
struct Utf8Form {
    std::size_t length;
    std::uint8_t lead_mask;
    std::uint8_t lead;
    char32_t first;
};
constexpr Utf8Form kUtf8Forms[] = {
    {1, 0x80, 0x00, 0x0},
    {2, 0xE0, 0xC0, 0x80},
    {3, 0xF0, 0xE0, 0x800},
    {4, 0xF8, 0xF0, 0x10000},
};

// Reads the character at `at` and moves `at` past it. False, with `at` unchanged, if the bytes are
// malformed.
bool read_character(const std::string& text, std::size_t& at, char32_t& character) {
    const auto byte = [&text](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
    for (const Utf8Form& form : kUtf8Forms) {
        if ((byte(at) & form.lead_mask) != form.lead) {
            continue;
        }
        if (text.size() - at < form.length) {
            return false;
        }
        char32_t value = byte(at) & static_cast<std::uint8_t>(~form.lead_mask);
        for (std::size_t i = 1; i < form.length; ++i) {
            if ((byte(at + i) & 0xC0) != 0x80) {
                return false;
            }
            value = (value << 6) | (byte(at + i) & 0x3F);
        }
        if (value < form.first || value > kLastCharacter || is_high_surrogate(value) ||
            is_low_surrogate(value)) {
            return false;
        }
        character = value;
        at += form.length;
        return true;
    }
    return false;
}

void append_utf8(char32_t character, std::string& text) {
    std::size_t form = 3;
    while (form > 0 && character < kUtf8Forms[form].first) {
        --form;
    }
    const std::size_t length = kUtf8Forms[form].length;
    const std::size_t tail_bits = 6 * (length - 1);
    text += static_cast<char>(kUtf8Forms[form].lead | (character >> tail_bits));
    for (std::size_t i = 1; i < length; ++i) {
        text += static_cast<char>(0x80 | ((character >> (tail_bits - 6 * i)) & 0x3F));
    }
}

}  // namespace

std::wstring units_from_utf8(const std::string& text) {
    std::wstring units;
    units.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        char32_t character = 0;
        if (!read_character(text, at, character)) {
            character = static_cast<std::uint8_t>(text[at++]);
        }
        append_units(character, units);
    }
    return units;
}

std::wstring units_from_wide(const std::wstring& text) {
    std::wstring units;
    units.reserve(text.size());
    for (const wchar_t wide : text) {
        const char32_t character = static_cast<char32_t>(wide);
        append_units(character <= kLastCharacter ? character : kReplacement, units);
    }
    return units;
}

std::string utf8_from_units(const std::wstring& units) {
    std::string text;
    text.reserve(units.size());
    for (std::size_t i = 0; i < units.size(); ++i) {
        char32_t character = static_cast<char32_t>(units[i]);
        const char32_t next = i + 1 < units.size() ? static_cast<char32_t>(units[i + 1]) : 0;
        if (is_high_surrogate(character) && is_low_surrogate(next)) {
            character = 0x10000 + ((character - 0xD800) << 10) + (next - 0xDC00);
            ++i;
        } else if (is_high_surrogate(character) || is_low_surrogate(character)) {
            character = kReplacement;
        }
        append_utf8(character, text);
    }
    return text;
}

}  // namespace memhost

UTF8Str WStr::ToUTF8() const {
    return UTF8Str(memhost::utf8_from_units(text_));
}
