#include <windows.h>

#include <iterator>

#include "plugins/3dsmax/shell/string_resources.h"

HINSTANCE module_handle = nullptr;

const wchar_t* LoadStringResource(UINT id) {
    static wchar_t text[256];
    if (module_handle == nullptr ||
        LoadStringW(module_handle, id, text, static_cast<int>(std::size(text))) == 0) {
        return nullptr;
    }
    return text;
}
