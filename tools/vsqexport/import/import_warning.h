#pragma once

#include <string>
#include <vector>

namespace vsqexport {

/// Something that an import leaves out of a model, or changes.
struct ImportWarning {
    const char* code;  ///< for reports; docs/report.md lists the codes of imports
    std::string text;  ///< one line
    const char* severity = "lost";
};

using ImportWarnings = std::vector<ImportWarning>;

}  // namespace vsqexport
