#pragma once

#include <string>
#include <vector>

#include "tests/support/environment_variable.h"
#include "tests/support/temporary_folder.h"

/// One value of a key below the machine's or the user's hive. `value` has the form of a registry
/// export, such as "\"text\"" or "dword:0000000b".
struct RegistryEntry {
    const char* hive;
    std::string key;
    std::string name;
    std::string value;
};

/// A registry with some entries during the object's lifetime. On Windows they are written to the
/// real registry and their keys are deleted again. Elsewhere they are in the registry file of the
/// test's own configuration folder.
class RegistryEntries {
public:
    explicit RegistryEntries(const std::vector<RegistryEntry>& entries);
    RegistryEntries(const RegistryEntries&) = delete;
    RegistryEntries& operator=(const RegistryEntries&) = delete;
    ~RegistryEntries();

private:
    std::vector<RegistryEntry> entries_;
    TemporaryFolder folder_;
    EnvironmentVariable config_{"XDG_CONFIG_HOME", folder_.path().u8string()};
};

#ifdef _WIN32

inline HKEY hive_named(const std::string& name) {
    return name == "HKEY_CURRENT_USER" ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
}

inline RegistryEntries::RegistryEntries(const std::vector<RegistryEntry>& entries)
    : entries_(entries) {
    for (const RegistryEntry& entry : entries) {
        HKEY key = nullptr;
        RegCreateKeyExW(hive_named(entry.hive), platform::wide_from_utf8(entry.key).c_str(), 0,
                        nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr);
        const std::wstring name = platform::wide_from_utf8(entry.name);
        if (entry.value.front() == '"') {
            std::string text;
            for (size_t i = 1; i + 1 < entry.value.size(); ++i) {
                i += entry.value[i] == '\\' ? 1 : 0;
                text += entry.value[i];
            }
            const std::wstring wide = platform::wide_from_utf8(text);
            RegSetValueExW(key, name.c_str(), 0, REG_SZ,
                           reinterpret_cast<const BYTE*>(wide.c_str()),
                           static_cast<DWORD>((wide.size() + 1) * sizeof(wchar_t)));
        } else if (entry.value.front() == 'h') {  // hex(KIND):BYTE,BYTE,...
            std::vector<BYTE> bytes;
            std::string digits;
            for (const char c : entry.value.substr(entry.value.find(':') + 1) + ",") {
                if (std::isxdigit(static_cast<unsigned char>(c))) {
                    digits += c;
                } else if (c == ',') {
                    bytes.push_back(static_cast<BYTE>(std::stoul(digits, nullptr, 16)));
                    digits.clear();
                }
            }
            RegSetValueExW(key, name.c_str(), 0, std::stoul(entry.value.substr(4), nullptr, 16),
                           bytes.data(), static_cast<DWORD>(bytes.size()));
        } else {
            const DWORD number = std::stoul(entry.value.substr(6), nullptr, 16);
            RegSetValueExW(key, name.c_str(), 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number),
                           sizeof number);
        }
        RegCloseKey(key);
    }
}

inline RegistryEntries::~RegistryEntries() {
    for (const RegistryEntry& entry : entries_) {
        RegDeleteTreeW(hive_named(entry.hive), platform::wide_from_utf8(entry.key).c_str());
    }
}

#else

inline RegistryEntries::RegistryEntries(const std::vector<RegistryEntry>& entries)
    : entries_(entries) {
    std::filesystem::create_directories(folder_.path() / "quoria");
    std::ofstream file(folder_.path() / "quoria/registry.reg", std::ios::binary);
    file << "Windows Registry Editor Version 5.00\r\n\r\n";
    for (const RegistryEntry& entry : entries) {
        file << "[" << entry.hive << "\\" << entry.key << "]\r\n\"" << entry.name
             << "\"=" << entry.value << "\r\n\r\n";
    }
}

inline RegistryEntries::~RegistryEntries() = default;

#endif
