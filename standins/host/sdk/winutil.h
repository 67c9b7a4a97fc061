#pragma once

#include "standins/host/sdk/maxtypes.h"

#ifdef _WIN32
/// Moves `child` over the middle of `parent`, or of the screen if that is null.
void CenterWindow(HWND child, HWND parent);
#endif
