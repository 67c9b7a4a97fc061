#pragma once

#include <string>

namespace platform {

/// UTF-8 as the host, Windows and the registry hold text: one 16-bit unit in each `wchar_t`, also
/// where that is wider, and a surrogate pair for each character past 0xFFFF.
///
/// A byte that isn't part of well-formed UTF-8, as in a name of an old code page, becomes the unit
/// of its own number.
std::wstring wide_from_utf8(const std::string& text);

/// The way back. A surrogate without its partner becomes the replacement character U+FFFD.
std::string utf8_from_wide(const std::wstring& units);

}  // namespace platform
