#include "standins/host/memory/module_strings.h"

namespace memhost {

std::wstring module_string(HINSTANCE module, UINT id) {
    // With no room at all it gives a pointer to the resource, which has no zero at its end.
    const wchar_t* text = nullptr;
    const int length = LoadStringW(module, id, reinterpret_cast<LPWSTR>(&text), 0);
    return length > 0 ? std::wstring(text, static_cast<std::size_t>(length)) : std::wstring();
}

}  // namespace memhost
