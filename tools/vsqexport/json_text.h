#pragma once

#include <string>

namespace vsqexport {

/// A JSON string with its quotation marks. Bytes that aren't UTF-8 become U+FFFD.
std::string json_text(const std::string& bytes);

}  // namespace vsqexport
