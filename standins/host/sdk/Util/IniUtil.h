#pragma once

#include "standins/host/sdk/maxtypes.h"

// As on Windows, where the system's own function of that name brings the macro along.
#ifndef _WIN32
#define GetPrivateProfileString GetPrivateProfileStringW
#define WritePrivateProfileString WritePrivateProfileStringW
#endif

/// Values of settings files, one at a time. Unlike those of the system, these read and write UTF-8.
namespace MaxSDK {
namespace Util {

/// Fills `out`, of `size` characters, with the value and a zero, or with `default_text` where the
/// file has none. What is too long is cut off. Gives the length.
DWORD GetPrivateProfileStringW(const MCHAR* section, const MCHAR* key, const MCHAR* default_text,
                               MCHAR* out, DWORD size, const MCHAR* file);

/// The file's other values and its comments stay. False if it can't be written.
BOOL WritePrivateProfileStringW(const MCHAR* section, const MCHAR* key, const MCHAR* text,
                                const MCHAR* file);

}  // namespace Util
}  // namespace MaxSDK
