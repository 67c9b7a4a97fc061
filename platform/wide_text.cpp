#include "platform/wide_text.h"

#include <cstddef>

namespace platform {

namespace {

struct Character {
    char32_t code;
    std::size_t length;  // in bytes
};

std::size_t length_after_lead(unsigned char lead) {
    // ASCII is one byte long. The other bytes outside this range can't begin a character: they
    // would lead to an overlong form or a code above 0x10FFFF, or are continuation bytes.
    if (lead < 0xC2 || lead > 0xF4) {
        return 1;
    }
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

bool is_character(char32_t code, std::size_t length) {
    constexpr char32_t kFirstOfLength[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool is_surrogate = code >= 0xD800 && code <= 0xDFFF;
    return code >= kFirstOfLength[length] && code <= 0x10FFFF && !is_surrogate;
}

Character character_at(const std::string& text, std::size_t at) {
    const auto lead = static_cast<unsigned char>(text[at]);
    const std::size_t length = length_after_lead(lead);
    if (length == 1 || text.size() - at < length) {
        return {lead, 1};
    }

    char32_t code = lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto byte = static_cast<unsigned char>(text[at + i]);
        if ((byte & 0xC0) != 0x80) {
            return {lead, 1};
        }
        code = code << 6 | (byte & 0x3F);
    }
    return is_character(code, length) ? Character{code, length} : Character{lead, 1};
}

void append_utf8(std::string& text, char32_t code) {
    constexpr char32_t kLeads[] = {0xC0, 0xE0, 0xF0};
    if (code < 0x80) {
        text += static_cast<char>(code);
        return;
    }
    const int more = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;  // bytes after the first
    text += static_cast<char>(kLeads[more - 1] | code >> 6 * more);
    for (int left = more - 1; left >= 0; --left) {
        text += static_cast<char>(0x80 | (code >> 6 * left & 0x3F));
    }
}

bool is_high_surrogate(char32_t unit) {
    return (unit & 0xFC00) == 0xD800;
}

bool is_low_surrogate(char32_t unit) {
    return (unit & 0xFC00) == 0xDC00;
}

}  // namespace

std::wstring wide_from_utf8(const std::string& text) {
    std::wstring units;
    units.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const Character character = character_at(text, at);
        at += character.length;
        if (character.code <= 0xFFFF) {
            units += static_cast<wchar_t>(character.code);
        } else {
            const char32_t offset = character.code - 0x10000;
            units += static_cast<wchar_t>(0xD800 + (offset >> 10));
            units += static_cast<wchar_t>(0xDC00 + (offset & 0x3FF));
        }
    }
    return units;
}

std::string utf8_from_wide(const std::wstring& units) {
    constexpr char32_t kReplacement = 0xFFFD;
    std::string text;
    text.reserve(units.size());
    for (std::size_t i = 0; i < units.size(); ++i) {
        const char32_t unit = static_cast<char32_t>(units[i]) & 0xFFFF;
        const char32_t next =
            i + 1 < units.size() ? static_cast<char32_t>(units[i + 1]) & 0xFFFF : 0;
        if (is_high_surrogate(unit) && is_low_surrogate(next)) {
            append_utf8(text, 0x10000 + ((unit & 0x3FF) << 10) + (next & 0x3FF));
            ++i;
        } else if (is_high_surrogate(unit) || is_low_surrogate(unit)) {
            append_utf8(text, kReplacement);
        } else {
            append_utf8(text, unit);
        }
    }
    return text;
}

}  // namespace platform
