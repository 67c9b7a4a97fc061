#pragma once

#include <string>
#include <vector>

#include "tests/support/registry_entries.h"

/// A text as a value of a `RegistryEntry`.
inline std::string registry_text(const std::string& text) {
    std::string value = "\"";
    for (const char c : text) {
        value += c == '\\' ? "\\\\" : std::string(1, c);
    }
    return value + "\"";
}

/// What registers an installation of the renderer under a name such as "Velmora 11".
inline std::vector<RegistryEntry> installation_entries(const char* hive, const std::string& name,
                                                       const std::string& program,
                                                       const std::string& bin_folder,
                                                       const std::string& resource_folder) {
    const std::string key = "SOFTWARE\\Quoria\\" + name;
    return {{hive, key, "BinName", registry_text(program)},
            {hive, key, "BinFolder", registry_text(bin_folder)},
            {hive, key, "ResourceFolder", registry_text(resource_folder)}};
}
