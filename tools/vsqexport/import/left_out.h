#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace vsqexport {

/// Collects what can't be imported from a model, so that the user gets one line for each reason and
/// not one for each thing.
class LeftOut {
public:
    /// `kind` is a word for the user such as "camera".
    explicit LeftOut(std::string kind) : kind_(std::move(kind)) {}

    /// The reason is the end of a sentence: "it has no keys".
    void add(const std::string& name, const std::string& reason) {
        names_by_reason_[reason].push_back(name);
    }

    void warn(std::vector<std::string>& warnings) const {
        for (const auto& [reason, names] : names_by_reason_) {
            std::string line = "the " + kind_ + " \"" + names.front() + "\"";
            if (names.size() > 1) {
                line += " and " + std::to_string(names.size() - 1) + " more are left out: ";
            } else {
                line += " is left out: ";
            }
            warnings.push_back(line + reason);
        }
    }

private:
    std::string kind_;
    std::map<std::string, std::vector<std::string>> names_by_reason_;
};

}  // namespace vsqexport
