#pragma once

#include <string>

namespace platform {

/// `text` with each "%NAME%" replaced by that environment variable; a name without a variable
/// stays as it stands. UTF-8.
std::string expand_environment(const std::string& text);

}  // namespace platform
