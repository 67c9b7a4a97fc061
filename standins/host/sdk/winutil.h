#pragma once

#include "standins/host/sdk/maxtypes.h"

#ifdef _WIN32
/// Centres `child` over `parent`, or on the screen if `parent` is null.
void CenterWindow(HWND child, HWND parent);
#endif
