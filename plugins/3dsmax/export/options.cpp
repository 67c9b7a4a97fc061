#include "plugins/3dsmax/export/options.h"

#include <cwchar>
#include <iterator>
#include <string>

namespace Qor {

namespace {

// Characters in the text of a value, including the null terminator. A longer text is cut; it isn't
// "1" in any case.
constexpr std::size_t kValueSize = 260;

const wchar_t* text_of(bool value) {
    return value ? L"1" : L"0";
}

// `name` must be ASCII.
std::wstring widened(const std::string& name) {
    return std::wstring(name.begin(), name.end());
}

bool read_value(const wchar_t* path, const OptionKey& option) {
    if (path[0] == 0) {
        return option.initially;
    }
    wchar_t text[kValueSize];
    MaxSDK::Util::GetPrivateProfileString(widened(option.section).c_str(),
                                          widened(option.key).c_str(), text_of(option.initially),
                                          text, static_cast<DWORD>(std::size(text)), path);
    return std::wcscmp(text, text_of(true)) == 0;
}

}  // namespace

Options::Options(Interface* the_host) : host(the_host) {
    Load();
}

int Options::Load() {
    wchar_t path[kSettingsPathSize];
    GetSettingsPath(path);
    for (std::size_t i = 0; i < kOptionKeys.size(); ++i) {
        this->*kOptionFields[i] = read_value(path, kOptionKeys[i]);
    }
    return 0;
}

void Options::Save() const {
    wchar_t path[kSettingsPathSize];
    GetSettingsPath(path);
    if (path[0] == 0) {
        return;
    }
    for (std::size_t i = 0; i < kOptionKeys.size(); ++i) {
        MaxSDK::Util::WritePrivateProfileString(widened(kOptionKeys[i].section).c_str(),
                                                widened(kOptionKeys[i].key).c_str(),
                                                text_of(this->*kOptionFields[i]), path);
    }
}

void Options::GetSettingsPath(wchar_t* out) const {
    std::wstring path = host->GetDir(APP_PLUGCFG_DIR);
    if (!path.empty() && path.back() != L'\\') {
        path += L'\\';
    }
    path += widened(kSettingsFile);
    if (path.size() >= kSettingsPathSize) {
        path.clear();
    }
    path.copy(out, path.size());
    out[path.size()] = 0;
}

}  // namespace Qor
