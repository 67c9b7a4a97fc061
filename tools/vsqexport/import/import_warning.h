#pragma once

#include <string>
#include <vector>

namespace vsqexport {

/// Something that an import leaves out of a model.
struct ImportWarning {
    const char* code;  ///< for reports; docs/report.md lists the codes of imports
    std::string text;  ///< one line
};

using ImportWarnings = std::vector<ImportWarning>;

}  // namespace vsqexport
