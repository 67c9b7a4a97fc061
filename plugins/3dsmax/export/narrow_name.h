#pragma once

#include <string>

/// A host name in the form that a scene takes: the low byte of each 16-bit unit, for at most 1023
/// units. There is no conversion to a code page, so characters outside Latin-1 change. Null gives
/// an empty name.
std::string NarrowName(const wchar_t* text);

/// The same. Sets `is_faithful` to whether the result holds the whole text.
std::string NarrowName(const wchar_t* text, bool& is_faithful);
