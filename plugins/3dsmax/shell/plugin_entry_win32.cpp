#include <windows.h>

#include <commctrl.h>  // relies on windows.h

#include "plugins/3dsmax/shell/string_resources.h"

BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) {
        module_handle = module;
        InitCommonControls();  // for the dialog's trackbar
    }
    return TRUE;
}
