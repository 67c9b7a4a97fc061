#include "platform/registry.h"

#include <windows.h>

#include <cstring>
#include <vector>

#include "platform/wide_text.h"

namespace platform {

struct RegistryKey::State {
    explicit State(HKEY opened) : key(opened) {}
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State() { RegCloseKey(key); }

    HKEY key;
};

RegistryKey::RegistryKey(std::unique_ptr<State> state) : state_(std::move(state)) {}
RegistryKey::RegistryKey(RegistryKey&&) noexcept = default;
RegistryKey& RegistryKey::operator=(RegistryKey&&) noexcept = default;
RegistryKey::~RegistryKey() = default;

std::optional<RegistryKey> RegistryKey::open(RegistryHive hive, const std::string& path) {
    const HKEY root = hive == RegistryHive::kCurrentUser ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
    HKEY key = nullptr;
    if (RegOpenKeyExW(root, wide_from_utf8(path).c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    return RegistryKey(std::make_unique<State>(key));
}

std::optional<RegistryValue> RegistryKey::read(const std::string& name) const {
    const std::wstring wide_name = wide_from_utf8(name);
    DWORD type = 0;
    DWORD size = 0;
    if (RegQueryValueExW(state_->key, wide_name.c_str(), nullptr, &type, nullptr, &size) !=
        ERROR_SUCCESS) {
        return std::nullopt;
    }
    std::vector<BYTE> data(size);
    if (RegQueryValueExW(state_->key, wide_name.c_str(), nullptr, &type, data.data(), &size) !=
        ERROR_SUCCESS) {
        return std::nullopt;
    }

    RegistryValue value{static_cast<RegistryType>(type), {}, {}, size};
    if (type == REG_SZ || type == REG_EXPAND_SZ) {
        // The stored text may lack a terminator, and it ends at the first one.
        std::wstring text(size / sizeof(wchar_t), L'\0');
        std::memcpy(text.data(), data.data(), text.size() * sizeof(wchar_t));
        value.text = utf8_from_wide(text.c_str());
    } else if (type == REG_DWORD && size == sizeof(std::uint32_t)) {
        std::memcpy(&value.number.emplace(), data.data(), sizeof(std::uint32_t));
    }
    return value;
}

}  // namespace platform
