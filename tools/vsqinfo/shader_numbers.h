#pragma once

#include <cstdint>
#include <iterator>
#include <map>

namespace vsqinfo {

/// The numbers of the shaders that a scene has defined so far.
///
/// A scene counts its shaders up from 1, so they are held as runs of successive numbers: a usual
/// file of any length needs one entry.
class ShaderNumbers {
public:
    void insert(std::int64_t number) {
        if (contains(number)) {
            return;
        }
        const auto run = last_of_run_.emplace(number, number).first;
        join_with_next(run);
        if (run != last_of_run_.begin()) {
            join_with_next(std::prev(run));
        }
    }

    bool contains(std::int64_t number) const {
        const auto behind = last_of_run_.upper_bound(number);
        return behind != last_of_run_.begin() && number <= std::prev(behind)->second;
    }

private:
    using Runs = std::map<std::int64_t, std::int64_t>;  // first and last number of a run

    void join_with_next(Runs::iterator run) {
        const auto next = std::next(run);
        if (next == last_of_run_.end() || next->first - 1 != run->second) {
            return;
        }
        run->second = next->second;
        last_of_run_.erase(next);
    }

    Runs last_of_run_;
};

}  // namespace vsqinfo
