#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tools/vsqinfo/byte_source.h"
#include "tools/vsqinfo/check_table.h"

namespace vsqinfo {

/// One place of a file that a check has something to say about.
struct Finding {
    FilePlace place;
    std::string text;  ///< the facts, in one line that is safe to print
};

/// What the checks have found in one file, by check.
class Findings {
public:
    /// All findings are counted. Of each check, this many are kept, so that a file that is wrong
    /// all over doesn't fill the memory.
    static constexpr std::size_t kKept = 10'000;

    void add(Check check, FilePlace place, std::string text);

    const std::vector<Finding>& kept(Check check) const { return of(check).kept; }
    std::uint64_t count(Check check) const { return of(check).count; }
    std::uint64_t count(Severity severity) const;

    /// The checks that found something, worst first.
    std::vector<Check> checks() const;

private:
    struct OfCheck {
        std::vector<Finding> kept;
        std::uint64_t count = 0;
    };

    const OfCheck& of(Check check) const { return found_[static_cast<std::size_t>(check)]; }

    std::array<OfCheck, static_cast<std::size_t>(Check::kCount)> found_;
};

}  // namespace vsqinfo
