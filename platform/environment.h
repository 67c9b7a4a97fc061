#pragma once

#include <string>

namespace platform {

/// Returns `text` with each "%NAME%" replaced by the value of that environment variable. Names of
/// unset variables stay in the text. All texts are UTF-8.
std::string expand_environment(const std::string& text);

}  // namespace platform
