#pragma once

#include <string>

/// Text of the system, which is UTF-8, as the host takes it: one 16-bit unit in each `wchar_t`,
/// also where that is wider, and a surrogate pair for each character past 0xFFFF.
///
/// A byte that is no part of well-formed UTF-8 becomes the unit of its own number, so that
/// `NarrowName` gives back what an old code page wrote.
std::wstring WideFromUtf8(const std::string& text);
