#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "tools/vsqexport/import/import_warning.h"

namespace vsqexport {

/// Collects what can't be imported from a model, so that the user gets one line for each reason and
/// not one for each thing.
class LeftOut {
public:
    /// `kind` is a word for the user such as "camera", and `code` that of the warnings.
    LeftOut(std::string kind, const char* code) : kind_(std::move(kind)), code_(code) {}

    /// The reason is the end of a sentence: "it has no keys".
    void add(const std::string& name, const std::string& reason) {
        names_by_reason_[reason].push_back(name);
    }

    void warn(ImportWarnings& warnings) const {
        for (const auto& [reason, names] : names_by_reason_) {
            std::string line = "the " + kind_ + " \"" + names.front() + "\"";
            if (names.size() > 1) {
                line += " and " + std::to_string(names.size() - 1) + " more are left out: ";
            } else {
                line += " is left out: ";
            }
            warnings.push_back({code_, line + reason});
        }
    }

private:
    std::string kind_;
    const char* code_;
    std::map<std::string, std::vector<std::string>> names_by_reason_;
};

}  // namespace vsqexport
