#pragma once

#include <string>

/// Text as the host stores it: one 16-bit unit in each `wchar_t`, even where `wchar_t` is wider,
/// and a surrogate pair for each character above 0xFFFF.
namespace memhost {

/// A byte that isn't part of well-formed UTF-8 is read as Latin-1, so that text in an old encoding
/// stays readable.
std::wstring units_from_utf8(const std::string& text);

/// Splits characters above 0xFFFF into surrogate pairs. Wide text holds them in one piece where
/// `wchar_t` is wider than 16 bits.
std::wstring units_from_wide(const std::wstring& text);

/// An unpaired surrogate becomes the replacement character U+FFFD.
std::string utf8_from_units(const std::wstring& units);

}  // namespace memhost
