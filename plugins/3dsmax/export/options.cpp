#include "plugins/3dsmax/export/options.h"

#include <cwchar>
#include <iterator>
#include <string>

namespace Qor {

namespace {

constexpr wchar_t kSettingsFile[] = L"velmoraexport7.ini";

// Of a value's text with the zero at its end. A longer one is cut, and isn't "1" either way.
constexpr std::size_t kValueSize = 260;

const wchar_t* text_of(bool value) {
    return value ? L"1" : L"0";
}

// The names of sections and keys are plain ASCII.
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
    for (const OptionKey& option : kOptionKeys) {
        this->*option.field = read_value(path, option);
    }
    return 0;
}

void Options::Save() const {
    wchar_t path[kSettingsPathSize];
    GetSettingsPath(path);
    if (path[0] == 0) {
        return;
    }
    for (const OptionKey& option : kOptionKeys) {
        MaxSDK::Util::WritePrivateProfileString(widened(option.section).c_str(),
                                                widened(option.key).c_str(),
                                                text_of(this->*option.field), path);
    }
}

void Options::GetSettingsPath(wchar_t* out) const {
    std::wstring path = host->GetDir(APP_PLUGCFG_DIR);
    if (!path.empty() && path.back() != L'\\') {
        path += L'\\';
    }
    path += kSettingsFile;
    if (path.size() >= kSettingsPathSize) {
        path.clear();
    }
    path.copy(out, path.size());
    out[path.size()] = 0;
}

}  // namespace Qor
