#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <utility>

namespace vsqinfo {

/// Aligned lines of a title and a value.
class SummaryTable {
public:
    void row(const std::string& title, const std::string& value) {
        text_ += title;
        text_.append(title.size() < kWidth ? kWidth - title.size() : 1, ' ');
        text_ += value;
        text_ += '\n';
    }

    /// `details` are further counts after the first; those of 0 are left out.
    struct Detail {
        std::uint64_t count;
        const char* what;
    };
    void count(const std::string& title, std::uint64_t number,
               std::initializer_list<Detail> details = {}) {
        std::string value = std::to_string(number);
        const char* separator = "  (";
        for (const Detail& detail : details) {
            if (detail.count == 0) {
                continue;
            }
            value += separator + std::to_string(detail.count) + " " + detail.what;
            separator = ", ";
        }
        row(title, value + (separator[0] == ',' ? ")" : ""));
    }

    std::string take() { return std::move(text_); }

private:
    static constexpr std::size_t kWidth = 14;
    std::string text_;
};

}  // namespace vsqinfo
