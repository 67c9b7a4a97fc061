#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

// Text is UTF-8 both in the file and in this code.
#define SI_NO_CONVERSION
#define SI_IMPLEMENTATION
#include <SimpleIni.h>

#include "standins/host/memory/host_text.h"
#include "standins/host/sdk/max.h"

namespace {

namespace fs = std::filesystem;

constexpr char kUtf8Signature[] = "\xef\xbb\xbf";

// The contents of a settings file.
class IniFile {
public:
    // A file that doesn't exist counts as empty.
    explicit IniFile(const MCHAR* path) : path_(native(path)) {
        const std::string text = contents(path_);
        trailing_comments_ = trailing_comments(text);
        signed_ = text.compare(0, 3, kUtf8Signature) == 0;
        ini_.SetUnicode();
        ini_.SetSpaces(false);
        ini_.LoadData(text);
    }

    // Null if the file has no such value.
    const char* value(const MCHAR* section, const MCHAR* key) const {
        return ini_.GetValue(utf8(section).c_str(), utf8(key).c_str());
    }

    bool write(const MCHAR* section, const MCHAR* key, const MCHAR* text) {
        std::string whole;
        if (ini_.SetValue(utf8(section).c_str(), utf8(key).c_str(), utf8(text).c_str()) < 0 ||
            ini_.Save(whole, signed_) < 0) {
            return false;
        }
        std::ofstream file(path_, std::ios::binary);
        file << whole << trailing_comments_;
        file.close();
        return !file.fail();
    }

private:
    static std::string utf8(const MCHAR* text) { return memhost::utf8_from_units(text); }

    static std::string contents(const fs::path& path) {
        std::error_code error;
        if (!fs::is_regular_file(path, error)) {
            return {};
        }
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    // The comments after the last value, which the library drops.
    static std::string trailing_comments(const std::string& text) {
        std::string comments;
        bool has_values = false;
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            const std::size_t start = line.find_first_not_of(" \t\r");
            if (start == std::string::npos) {
                continue;
            }
            if (line[start] == ';' || line[start] == '#') {
                comments += line + '\n';
            } else {
                comments.clear();
                has_values = true;
            }
        }
        // In a file without values the comments belong to the whole file, and the library keeps
        // them.
        return has_values ? comments : std::string();
    }

    // Plug-ins build paths with the separator of Windows.
    static fs::path native(const MCHAR* path) {
        std::string text = utf8(path);
        std::replace(text.begin(), text.end(), '\\', '/');
        return fs::u8path(text);
    }

    fs::path path_;
    CSimpleIniA ini_;
    std::string trailing_comments_;
    bool signed_;
};

}  // namespace

DWORD MaxSDK::Util::GetPrivateProfileStringW(const MCHAR* section, const MCHAR* key,
                                             const MCHAR* default_text, MCHAR* out, DWORD size,
                                             const MCHAR* file) {
    if (size == 0) {
        return 0;
    }
    const IniFile settings(file);
    const char* value = settings.value(section, key);
    const std::wstring text = value ? memhost::units_from_utf8(value) : default_text;
    const std::size_t length = text.copy(out, size - 1);
    out[length] = L'\0';
    return static_cast<DWORD>(length);
}

BOOL MaxSDK::Util::WritePrivateProfileStringW(const MCHAR* section, const MCHAR* key,
                                              const MCHAR* text, const MCHAR* file) {
    return IniFile(file).write(section, key, text);
}
