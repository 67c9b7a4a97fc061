#include "tools/vsqexport/animation_plan.h"

#include <cstddef>
#include <cstdint>
#include <stdexcept>

#include "tools/vsqexport/frame_number.h"

namespace vsqexport {

void AnimationOptions::set_piece(const std::string& text) {
    const std::size_t slash = text.find('/');
    std::optional<int> number, count;
    if (slash != std::string::npos) {
        number = parse_frame(text.substr(0, slash));
        count = parse_frame(text.substr(slash + 1));
    }
    if (!number || !count || *number < 0 || *number >= *count) {
        throw std::invalid_argument("--chunk takes K/N with K from 0 to N - 1, not '" + text + "'");
    }
    piece = *number;
    pieces = *count;
}

std::vector<int> frames_of_piece(int frames_in_range, const AnimationOptions& options) {
    const std::int64_t all = (std::int64_t{frames_in_range} + options.step - 1) / options.step;
    const std::int64_t first = all * options.piece / options.pieces;
    const std::int64_t end = all * (options.piece + 1) / options.pieces;
    std::vector<int> numbers;
    for (std::int64_t i = first; i < end; ++i) {
        numbers.push_back(static_cast<int>(i * options.step));
    }
    if (numbers.empty()) {
        throw std::invalid_argument("the piece " + std::to_string(options.piece) + "/" +
                                    std::to_string(options.pieces) + " has no frames: there are " +
                                    std::to_string(all));
    }
    return numbers;
}

std::vector<FrameRun> runs_of(const std::vector<int>& numbers,
                              const std::function<bool(std::size_t)>& is_wanted,
                              const std::function<bool(std::size_t)>& needs_whole) {
    std::vector<FrameRun> runs;
    bool goes_on = false;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (!is_wanted(i)) {
            goes_on = false;
            continue;
        }
        const bool is_whole = i == 0 || needs_whole(i);
        if (!goes_on || is_whole) {
            runs.emplace_back();
            if (!is_whole) {
                runs.back() = {{numbers[i - 1]}, true};
            }
        }
        runs.back().numbers.push_back(numbers[i]);
        goes_on = true;
    }
    return runs;
}

}  // namespace vsqexport
