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

/// The kinds of values that are read here, by the registry's own numbers. A value can have any
/// other number as well.
enum class RegistryType : std::uint32_t {
    kText = 1,
    kExpandableText = 2,  ///< with names of environment variables in it, as in "%ProgramFiles%"
    kNumber = 4,
};

struct RegistryValue {
    RegistryType type;
    std::string text;                     ///< UTF-8, of either kind of text, not expanded
    std::optional<std::uint32_t> number;  ///< of `kNumber`, if it is stored in four bytes
    std::size_t size = 0;  ///< in bytes as stored; text has 16-bit units and usually a terminator
};

/// One registry key, open for reading until the object goes.
///
/// On a system without a registry, a file in the text form of a registry export takes its place:
/// `registry.reg` in the folder `quoria` of the user's configuration folder, in UTF-8 or, as
/// Windows itself exports it, in UTF-16 behind a byte order mark. It is read afresh whenever a key
/// is opened. Key and value names match whatever the case of their letters, as in the registry.
class RegistryKey {
public:
    /// Nothing if there is no such key. `path` has backslashes between its parts.
    static std::optional<RegistryKey> open(RegistryHive hive, const std::string& path);

    RegistryKey(RegistryKey&&) noexcept;
    RegistryKey& operator=(RegistryKey&&) noexcept;
    ~RegistryKey();

    /// Nothing if the key has no value of that name.
    std::optional<RegistryValue> read(const std::string& name) const;

    /// The value of that name if it is of kind `kText` and fits a buffer of that many bytes as it
    /// is stored.
    std::optional<std::string> read_text(
        const std::string& name,
        std::size_t buffer_size = std::numeric_limits<std::size_t>::max()) const;

    /// Either kind of text; an expandable one is expanded. The limit is on the stored form.
    std::optional<std::string> read_expanded_text(const std::string& name,
                                                  std::size_t buffer_size) const;

private:
    struct State;
    explicit RegistryKey(std::unique_ptr<State> state);

    std::unique_ptr<State> state_;
};

}  // namespace platform
