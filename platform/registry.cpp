#include "platform/registry.h"

#include "platform/environment.h"

namespace platform {

std::optional<std::string> RegistryKey::read_text(const std::string& name,
                                                  std::size_t buffer_size) const {
    std::optional<RegistryValue> value = read(name);
    if (!value || value->type != RegistryType::kText || value->size > buffer_size) {
        return std::nullopt;
    }
    return std::move(value->text);
}

std::optional<std::string> RegistryKey::read_expanded_text(const std::string& name,
                                                           std::size_t buffer_size) const {
    std::optional<RegistryValue> value = read(name);
    if (!value || value->type != RegistryType::kExpandableText) {
        return read_text(name, buffer_size);
    }
    if (value->size > buffer_size) {
        return std::nullopt;
    }
    return expand_environment(value->text);
}

}  // namespace platform
