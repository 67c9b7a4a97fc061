#include "standins/host/memory/module_strings.h"

namespace memhost {

std::wstring module_string(HINSTANCE module, UINT id) {
    const wchar_t* text = module ? module->find_string(id) : nullptr;
    return text ? text : L"";
}

}  // namespace memhost
