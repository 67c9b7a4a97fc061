#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include "platform/wide_text.h"
#include "tests/support/registry_entries.h"

/// The value of a `RegistryEntry` that holds a text.
inline std::string registry_text(const std::string& text) {
    std::string value = "\"";
    for (const char c : text) {
        value += c == '\\' ? "\\\\" : std::string(1, c);
    }
    return value + "\"";
}

/// The value of a `RegistryEntry` whose text may contain environment variables, in the form in
/// which Windows exports it.
inline std::string expandable_text(const std::string& text) {
    std::string value = "hex(2):";
    for (const wchar_t unit : platform::wide_from_utf8(text) + L'\0') {
        char bytes[16];
        std::snprintf(bytes, sizeof bytes, "%02x,%02x,", unit & 0xff, unit >> 8 & 0xff);
        value += bytes;
    }
    value.pop_back();
    return value.insert(20, "\\\r\n  ");  // Windows breaks long values into lines
}

/// The entries that register an installation of the renderer under a name such as "Velmora 11".
inline std::vector<RegistryEntry> installation_entries(const char* hive, const std::string& name,
                                                       const std::string& program,
                                                       const std::string& bin_folder,
                                                       const std::string& resource_folder) {
    const std::string key = "SOFTWARE\\Quoria\\" + name;
    return {{hive, key, "BinName", registry_text(program)},
            {hive, key, "BinFolder", registry_text(bin_folder)},
            {hive, key, "ResourceFolder", registry_text(resource_folder)}};
}
