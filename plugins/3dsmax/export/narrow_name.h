#pragma once

#include <string>

/// A name of the host as it goes into a scene: one byte for each 16-bit unit, its low one, of at
/// most 1023 units. There is no code page in it, so a name outside Latin-1 comes out changed. Null
/// gives an empty name.
std::string NarrowName(const wchar_t* text);
