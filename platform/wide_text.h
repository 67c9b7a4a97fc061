#pragma once

#include <string>

namespace platform {

/// Converts UTF-8 to UTF-16, which the host, Windows and the registry use. Each `wchar_t` holds one
/// 16-bit unit, even if `wchar_t` is wider, so a character above 0xFFFF becomes a surrogate pair.
///
/// A byte that isn't part of well-formed UTF-8, for example in a name in an old code page, becomes
/// the unit with the same value.
std::wstring wide_from_utf8(const std::string& text);

/// Converts back. A surrogate without its partner becomes the replacement character U+FFFD.
std::string utf8_from_wide(const std::wstring& units);

}  // namespace platform
