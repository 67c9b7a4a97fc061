#pragma once

#include <string>

namespace vsqexport {

/// Whether a file's name is that of a model that can be read. Names that other programs use for
/// anything, such as "list.xml", don't count.
bool is_model_name(const std::string& path_utf8);

}  // namespace vsqexport
