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

/// The kinds of values that are read here, by the registry's own numbers; any other number can be
/// met as well.
enum class RegistryType : std::uint32_t { kText = 1, kNumber = 4 };

struct RegistryValue {
    RegistryType type;
    std::string text;          ///< UTF-8, without the terminator; of `kText` only
    std::uint32_t number = 0;  ///< of `kNumber` only
    std::size_t size = 0;  ///< in bytes as stored, of a text in 16-bit units with its terminator
};

/// One registry key, open for reading until the object goes.
///
/// On a system without a registry, a file in the text form of a registry export takes its place:
/// `registry.reg` in the folder `quoria` of the user's configuration folder, in UTF-8 or, as
/// Windows itself exports it, in UTF-16 behind a byte order mark. It is read afresh whenever a key
/// is opened. Names are found in any case of their letters, as in the registry.
class RegistryKey {
public:
    /// Nothing if there is no such key. `path` has backslashes between its parts.
    static std::optional<RegistryKey> open(RegistryHive hive, const std::string& path);

    RegistryKey(RegistryKey&&) noexcept;
    RegistryKey& operator=(RegistryKey&&) noexcept;
    ~RegistryKey();

    /// Nothing if the key has no value of that name.
    std::optional<RegistryValue> read(const std::string& name) const;

    /// The value of that name if it is a text that fits a buffer of that many bytes as it is
    /// stored.
    std::optional<std::string> read_text(
        const std::string& name,
        std::size_t buffer_size = std::numeric_limits<std::size_t>::max()) const;

private:
    struct State;
    explicit RegistryKey(std::unique_ptr<State> state);

    std::unique_ptr<State> state_;
};

}  // namespace platform
