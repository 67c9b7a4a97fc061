#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>

namespace platform {

/// The two hives in which programs register themselves.
enum class RegistryHive { kCurrentUser, kLocalMachine };

/// The value types that are read here, with the registry's own numbers. A value can also have any
/// other type.
enum class RegistryType : std::uint32_t {
    kText = 1,
    kExpandableText = 2,  ///< may contain environment variables, such as "%ProgramFiles%"
    kNumber = 4,
};

struct RegistryValue {
    RegistryType type;
    std::string text;                     ///< for both text types; UTF-8, not expanded
    std::optional<std::uint32_t> number;  ///< for `kNumber`, if it is stored in four bytes
    std::size_t size = 0;  ///< stored size in bytes; text is UTF-16 and usually null-terminated
};

/// A registry key that is open for reading as long as the object lives.
///
/// On a system without a registry, an exported registry file takes its place: `registry.reg` in
/// `user_configuration_folder`. It is UTF-8 or, as Windows exports it, UTF-16 with a byte order
/// mark. The file is read again whenever a key is opened. Names of keys and values are
/// case-insensitive, as in the registry.
class RegistryKey {
public:
    /// Returns nullopt if there is no such key. The parts of `path` are separated by backslashes.
    static std::optional<RegistryKey> open(RegistryHive hive, const std::string& path);

    RegistryKey(RegistryKey&&) noexcept;
    RegistryKey& operator=(RegistryKey&&) noexcept;
    ~RegistryKey();

    /// Returns nullopt if the key has no value of that name.
    std::optional<RegistryValue> read(const std::string& name) const;

    /// Returns a value of type `kText`. Returns nullopt if there is none, or if its stored form is
    /// larger than `buffer_size` bytes.
    std::optional<std::string> read_text(
        const std::string& name,
        std::size_t buffer_size = std::numeric_limits<std::size_t>::max()) const;

    /// Like `read_text`, but also accepts type `kExpandableText`, which it expands. `buffer_size`
    /// limits the stored form, not the expanded text.
    std::optional<std::string> read_expanded_text(const std::string& name,
                                                  std::size_t buffer_size) const;

private:
    struct State;
    explicit RegistryKey(std::unique_ptr<State> state);

    std::unique_ptr<State> state_;
};

}  // namespace platform
