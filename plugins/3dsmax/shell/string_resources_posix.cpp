#include <cwchar>
#include <iterator>

#include "plugins/3dsmax/shell/string_resources.h"

HINSTANCE module_handle = nullptr;

const wchar_t* LoadStringResource(UINT id) {
    static wchar_t text[256];
    const wchar_t* found = module_handle ? module_handle->find_string(id) : nullptr;
    if (found == nullptr) {
        return nullptr;
    }
    std::wcsncpy(text, found, std::size(text) - 1);
    return text;
}
