#include "platform/environment.h"

#include <windows.h>

#include "platform/wide_text.h"

namespace platform {

std::string expand_environment(const std::string& text) {
    const std::wstring wide = wide_from_utf8(text);
    std::wstring expanded(ExpandEnvironmentStringsW(wide.c_str(), nullptr, 0), L'\0');
    ExpandEnvironmentStringsW(wide.c_str(), expanded.data(), static_cast<DWORD>(expanded.size()));
    return utf8_from_wide(expanded.c_str());
}

}  // namespace platform
