#include "platform/registry.h"

namespace platform {

std::optional<std::string> RegistryKey::read_text(const std::string& name) const {
    const std::optional<RegistryValue> value = read(name);
    if (!value || value->type != RegistryType::kText) {
        return std::nullopt;
    }
    return value->text;
}

}  // namespace platform
