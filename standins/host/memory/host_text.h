#pragma once

#include <string>

/// Text as the host holds it: one 16-bit unit in each `wchar_t`, also where that is wider, and a
/// surrogate pair for each character past 0xFFFF.
namespace memhost {

/// A byte that is no part of well-formed UTF-8 becomes the character of its own number, as in
/// Latin-1, so that text of an old encoding stays readable.
std::wstring units_from_utf8(const std::string& text);

/// Splits the characters past 0xFFFF that wide text holds in one piece where `wchar_t` is wider.
std::wstring units_from_wide(const std::wstring& text);

/// A surrogate without its partner becomes the replacement character U+FFFD.
std::string utf8_from_units(const std::wstring& units);

}  // namespace memhost
