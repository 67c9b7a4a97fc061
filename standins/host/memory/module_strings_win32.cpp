#include "standins/host/memory/module_strings.h"

namespace memhost {

std::wstring module_string(HINSTANCE module, UINT id) {
    // For a buffer size of 0 the result is a pointer to the resource, which isn't null-terminated.
    const wchar_t* text = nullptr;
    const int length = LoadStringW(module, id, reinterpret_cast<LPWSTR>(&text), 0);
    return length > 0 ? std::wstring(text, static_cast<std::size_t>(length)) : std::wstring();
}

}  // namespace memhost
