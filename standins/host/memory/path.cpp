#include "standins/host/sdk/path.h"

#include <cwctype>
#include <filesystem>

#include "standins/host/memory/host_text.h"
#include "standins/host/memory/strict_rules.h"

const MaxSDK::Util::Path& MaxSDK::Util::Path::GetResolvedAbsolutePath() const {
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::path absolute =
        fs::absolute(fs::u8path(memhost::utf8_from_units(path_.data())), error);
    if (error) {
        return *this;
    }
    std::wstring text = memhost::units_from_utf8(absolute.u8string());
    if (memhost::host_obeys(memhost::StrictRule::kLowerCasePaths)) {
        for (wchar_t& letter : text) {
            letter = static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(letter)));
        }
    }
    resolved_ = std::make_shared<Path>(text.c_str());
    return *resolved_;
}
