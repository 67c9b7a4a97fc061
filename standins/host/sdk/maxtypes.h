#pragma once

/// The basic types in the host's signatures. On other systems they are as wide as on Windows,
/// except for `wchar_t`, which is wider but still holds one 16-bit unit.

#ifdef _WIN32

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#else

#include <cstdint>

using BOOL = int;
using WORD = std::uint16_t;
using UINT = std::uint32_t;
using ULONG = std::uint32_t;
using DWORD = std::uint32_t;
using DWORD_PTR = std::uintptr_t;
using ULONG_PTR = std::uintptr_t;
using COLORREF = DWORD;
using LPVOID = void*;
using HWND = struct HWND__*;
using HACCEL = struct HACCEL__*;
using LPTHREAD_START_ROUTINE = DWORD (*)(LPVOID);

/// A loaded module, with access to its string resources.
struct HINSTANCE__ {
    /// Null if there is no text with that id.
    const wchar_t* (*find_string)(UINT id);
};
using HINSTANCE = HINSTANCE__*;

#define TRUE 1
#define FALSE 0

#endif

using MCHAR = wchar_t;

/// A time in ticks, 4800 per second.
using TimeValue = int;
constexpr int TIME_TICKSPERSEC = 4800;
