#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
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
    // A file that doesn't exist counts as empty, and so does one that can't be read.
    explicit IniFile(const MCHAR* path) : path_(native(path)) {
        std::string text;
        readable_ = read(path_, text);
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
        if (!readable_ ||
            ini_.SetValue(utf8(section).c_str(), utf8(key).c_str(), utf8(text).c_str()) < 0 ||
            ini_.Save(whole, signed_) < 0) {
            return false;
        }
        return replace(path_, whole + trailing_comments_);
    }

private:
    static std::string utf8(const MCHAR* text) { return memhost::utf8_from_units(text); }

    // False if there is a file but it can't be read.
    static bool read(const fs::path& path, std::string& text) {
        std::error_code error;
        if (!fs::is_regular_file(path, error)) {
            return true;
        }
        std::ostringstream contents;
        std::ifstream file(path, std::ios::binary);
        if (!file.is_open() || (file.peek() != EOF && !(contents << file.rdbuf()))) {
            return false;
        }
        text = contents.str();
        return !file.bad();
    }

    static bool write_text(const fs::path& path, const std::string& text) {
        std::ofstream file(path, std::ios::binary);
        file << text;
        file.close();
        return !file.fail();
    }

    // If the disk is full, the old file stays: the new text goes to a file beside it, which then
    // takes its place.
    static bool replace(const fs::path& path, const std::string& text) {
        std::error_code error;
        if (!fs::is_regular_file(path, error)) {
            return write_text(path, text);
        }
        std::ofstream tried(path, std::ios::app);
        tried.close();
        if (tried.fail()) {
            return false;  // the user has made it read-only
        }
        const fs::path target = fs::canonical(path, error);  // a symbolic link stays
        fs::path beside = target;
        beside += "." + std::to_string(std::random_device()());
        if (!error && write_text(beside, text)) {
            fs::permissions(beside, fs::status(target, error).permissions(), error);
            fs::rename(beside, target, error);
            if (!error) {
                return true;
            }
        }
        fs::remove(beside, error);
        return false;
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
    bool readable_;
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
