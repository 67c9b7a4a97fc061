#pragma once

#include "standins/host/sdk/maxtypes.h"

// Windows has functions with these names, so its headers define these macros.
#ifndef _WIN32
#define GetPrivateProfileString GetPrivateProfileStringW
#define WritePrivateProfileString WritePrivateProfileStringW
#endif

/// Functions for single values of settings files. Unlike the system's, they read and write UTF-8.
namespace MaxSDK {
namespace Util {

/// Writes the null-terminated value to `out`, which has room for `size` characters. If the file has
/// no such value, `default_text` is used. Text that is too long is cut off. Returns the length
/// without the terminator.
DWORD GetPrivateProfileStringW(const MCHAR* section, const MCHAR* key, const MCHAR* default_text,
                               MCHAR* out, DWORD size, const MCHAR* file);

/// Keeps the file's other values and its comments. False if the file can't be written.
BOOL WritePrivateProfileStringW(const MCHAR* section, const MCHAR* key, const MCHAR* text,
                                const MCHAR* file);

}  // namespace Util
}  // namespace MaxSDK
