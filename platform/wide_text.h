#pragma once

#include <windows.h>

#include <string>

// Windows only: its calls take 16-bit text, everything above this folder holds UTF-8.

namespace platform {

/// A byte that is no part of UTF-8, as in the name of a node, becomes the character of its number.
inline std::wstring wide_from_utf8(const std::string& text) {
    std::wstring wide;
    for (size_t i = 0; i < text.size();) {
        const unsigned char lead = static_cast<unsigned char>(text[i]);
        const size_t expected = lead < 0x80 ? 1 : lead < 0xe0 ? 2 : lead < 0xf0 ? 3 : 4;
        const size_t size = expected < text.size() - i ? expected : text.size() - i;
        wchar_t units[2];
        const int count = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data() + i,
                                              static_cast<int>(size), units, 2);
        if (count > 0) {
            wide.append(units, static_cast<size_t>(count));
            i += size;
        } else {
            wide += static_cast<wchar_t>(lead);
            ++i;
        }
    }
    return wide;
}

inline std::string utf8_from_wide(const std::wstring& wide) {
    const int size = static_cast<int>(wide.size());
    const int length =
        WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, nullptr, 0, nullptr, nullptr);
    std::string text(static_cast<size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, text.data(), length, nullptr, nullptr);
    return text;
}

}  // namespace platform
