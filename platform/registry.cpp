#include "platform/registry.h"

namespace platform {

std::optional<std::string> RegistryKey::read_text(const std::string& name,
                                                  std::size_t buffer_size) const {
    const std::optional<RegistryValue> value = read(name);
    if (!value || value->type != RegistryType::kText || value->size > buffer_size) {
        return std::nullopt;
    }
    return value->text;
}

}  // namespace platform
