#include <windows.h>

#include <commctrl.h>  // relies on windows.h

#include "plugins/3dsmax/shell/string_resources.h"

BOOL WINAPI DllMain(HINSTANCE module, DWORD, LPVOID) {
    // The dialog's trackbar is a common control.
    if (module_handle == nullptr) {
        InitCommonControls();
    }
    module_handle = module;
    return TRUE;
}
