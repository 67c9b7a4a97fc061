#include "importers/sceneapi/dev/installation.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <utility>

#include "importers/sceneapi/dev/decimal_text.h"
#include "platform/files.h"
#include "platform/process.h"
#include "platform/registry.h"

namespace qor {

namespace {

using platform::RegistryHive;
using platform::RegistryKey;

constexpr char kRootKey[] = "SOFTWARE\\Quoria";
constexpr char kProduct[] = "Velmora";
constexpr char kProgramValue[] = "BinName";
constexpr char kLibraryFolderValue[] = "BinFolder";
constexpr char kFirstPortValue[] = "LiveLinkPort";
constexpr char kLastPortValue[] = "LiveLinkMaxPort";

// The largest stored sizes of registry texts that are accepted, in bytes.
constexpr std::size_t kValidatedTextSize = 2048;
constexpr std::size_t kUsedTextSize = 520;
constexpr std::size_t kPortTextSize = 512;

struct FoundInstallation {
    RegistryKey key;
    int version;
};

bool can_be_read(const std::string& path) {
    const std::unique_ptr<std::FILE, platform::CloseStream> file(platform::open_file(path, "rb"));
    return file != nullptr && !platform::is_folder(path);
}

// Opens the key of an installation whose program and resource folder exist.
std::optional<RegistryKey> open_valid_key(RegistryHive hive, const std::string& path) {
    std::optional<RegistryKey> key = RegistryKey::open(hive, path);
    if (!key) {
        return std::nullopt;
    }
    const std::optional<std::string> program =
        key->read_expanded_text(kProgramValue, kValidatedTextSize);
    const std::optional<std::string> resources =
        key->read_expanded_text(kResourceFolderValue, kValidatedTextSize);
    if (!program || !can_be_read(*program) || !resources || !platform::is_folder(*resources)) {
        return std::nullopt;
    }
    return key;
}

// Returns the number after the last letter that occurs in the product's name. That is 11 for both
// "C:\Velmora 11\" and "C:\Velmora 11\bin\". Returns 0 if no number follows that letter. Returns -1
// if there is no such letter or no separator, or if the last separator directly follows the letter.
int version_of_path(const std::string& path) {
    const std::size_t letter = path.find_last_of(kProduct);  // one letter, not the whole name
    std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) {
        slash = path.rfind('\\');
    }
    if (letter == std::string::npos || slash == std::string::npos || slash == letter + 1) {
        return -1;
    }
    const std::size_t end = slash < letter ? path.size() : slash;
    return decimal_number(path.substr(letter + 1, end - letter - 1));
}

std::optional<FoundInstallation> find_active_path(RegistryHive hive, const RegistryKey& root) {
    const std::optional<std::string> path =
        root.read_expanded_text("VelmoraActivePath", kValidatedTextSize);
    const int version = path ? version_of_path(*path) : -1;
    if (version < 0) {
        return std::nullopt;
    }
    std::optional<RegistryKey> key = open_valid_key(hive, installation_key(version));
    if (!key) {
        return std::nullopt;
    }
    return FoundInstallation{std::move(*key), version};
}

std::optional<FoundInstallation> find_named_version(RegistryHive hive, const RegistryKey& root) {
    const std::optional<std::string> name =
        root.read_expanded_text("VelmoraVersion", kValidatedTextSize);
    const std::size_t blank = name ? name->find(' ') : std::string::npos;
    const int version = blank == std::string::npos ? 0 : decimal_number(name->substr(blank + 1));
    if (version < 1) {
        return std::nullopt;
    }
    std::optional<RegistryKey> key = open_valid_key(hive, std::string(kRootKey) + "\\" + *name);
    if (!key) {
        return std::nullopt;
    }
    return FoundInstallation{std::move(*key), version};
}

std::optional<FoundInstallation> find_by_scan(RegistryHive hive, int min_version, int max_version) {
    for (int version = max_version; version >= min_version; --version) {
        if (std::optional<RegistryKey> key = open_valid_key(hive, installation_key(version))) {
            return FoundInstallation{std::move(*key), version};
        }
    }
    return std::nullopt;
}

// Prefers the installation that the hive calls active, then the one that it names, then the newest.
std::optional<FoundInstallation> search_hive(RegistryHive hive, int min_version, int max_version) {
    const auto is_accepted = [&](const std::optional<FoundInstallation>& found) {
        return found && found->version >= min_version && found->version <= max_version;
    };
    if (const std::optional<RegistryKey> root = RegistryKey::open(hive, kRootKey)) {
        std::optional<FoundInstallation> found = find_active_path(hive, *root);
        if (is_accepted(found)) {
            return found;
        }
        found = find_named_version(hive, *root);
        if (is_accepted(found)) {
            return found;
        }
    }
    return find_by_scan(hive, min_version, max_version);
}

// Finds the newest installation of both hives. If the versions are equal, the user's own wins.
std::optional<FoundInstallation> open_installation(int min_version, int max_version) {
    std::optional<FoundInstallation> best;
    int best_version = 0;
    for (const RegistryHive hive : {RegistryHive::kCurrentUser, RegistryHive::kLocalMachine}) {
        std::optional<FoundInstallation> found = search_hive(hive, min_version, max_version);
        if (found && found->version > best_version) {
            best_version = found->version;
            best = std::move(found);
        }
    }
    return best;
}

std::string text_of(const std::optional<FoundInstallation>& found, const std::string& name) {
    return found ? found->key.read_expanded_text(name, kUsedTextSize).value_or("") : std::string();
}

std::optional<std::int32_t> number_of(const RegistryKey& key, const std::string& name) {
    const std::optional<platform::RegistryValue> value = key.read(name);
    if (!value || !value->number) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(*value->number);
}

std::optional<std::int32_t> number_in_text_of(const RegistryKey& key, const std::string& name) {
    const std::optional<std::string> text = key.read_expanded_text(name, kPortTextSize);
    if (!text) {
        return std::nullopt;
    }
    return decimal_number(*text);
}

}  // namespace

std::string installation_key(int version) {
    return std::string(kRootKey) + "\\" + kProduct + " " + std::to_string(version);
}

const Installation& Installation::get() {
    static const Installation installation;
    return installation;
}

std::string Installation::bin_name(int min_version, int max_version) const {
    return text_of(open_installation(min_version, max_version), kProgramValue);
}

std::string Installation::bin_folder(int min_version, int max_version, int& version) const {
    const std::optional<FoundInstallation> found = open_installation(min_version, max_version);
    if (found) {
        version = found->version;
    }
    return text_of(found, kLibraryFolderValue);
}

std::string Installation::resource_folder(int min_version, int max_version) const {
    return text_of(open_installation(min_version, max_version), kResourceFolderValue);
}

Installation::PortStatus Installation::live_link_ports(int min_version, int max_version,
                                                       std::int32_t& first_port,
                                                       std::int32_t& last_port) const {
    const std::optional<FoundInstallation> found = open_installation(min_version, max_version);
    if (!found) {
        return PortStatus::kNoInstallation;
    }

    // The last port must be stored in the same form as the first.
    auto read = number_of;
    std::optional<std::int32_t> first = read(found->key, kFirstPortValue);
    if (!first) {
        read = number_in_text_of;
        first = read(found->key, kFirstPortValue);
    }
    if (!first) {
        return PortStatus::kNoFirstPort;
    }
    first_port = *first;
    const std::optional<std::int32_t> last = read(found->key, kLastPortValue);
    if (!last) {
        return PortStatus::kNoLastPort;
    }
    last_port = *last;
    return PortStatus::kBothRead;
}

bool Installation::launch(int min_version, int max_version) const {
    const std::string program = bin_name(min_version, max_version);
    return !program.empty() && platform::launch_program(program);
}

}  // namespace qor
