#include "tools/vsqinfo/checks/findings.h"

#include <utility>

namespace vsqinfo {

void Findings::add(Check check, FilePlace place, std::string text) {
    OfCheck& found = found_[static_cast<std::size_t>(check)];
    ++found.count;
    if (found.kept.size() < kKept) {
        found.kept.push_back({place, std::move(text)});
    }
}

std::uint64_t Findings::count(Severity severity) const {
    std::uint64_t sum = 0;
    for (std::size_t i = 0; i < found_.size(); ++i) {
        sum += check_row(static_cast<Check>(i)).severity == severity ? found_[i].count : 0;
    }
    return sum;
}

std::vector<Check> Findings::checks() const {
    std::vector<Check> checks;
    for (const Severity severity : {Severity::kError, Severity::kWarning, Severity::kHint}) {
        for (std::size_t i = 0; i < found_.size(); ++i) {
            const Check check = static_cast<Check>(i);
            if (found_[i].count != 0 && check_row(check).severity == severity) {
                checks.push_back(check);
            }
        }
    }
    return checks;
}

}  // namespace vsqinfo
