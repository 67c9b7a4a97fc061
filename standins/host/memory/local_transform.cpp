#include "standins/host/memory/local_transform.h"

#include <algorithm>
#include <utility>

namespace memhost {

LocalTransform::LocalTransform(std::vector<TransformKey> keys) {
    if (keys.empty()) {
        return;
    }
    std::stable_sort(keys.begin(), keys.end(),
                     [](const TransformKey& a, const TransformKey& b) { return a.tick < b.tick; });
    Keys ascending;
    for (const TransformKey& key : keys) {
        if (!ascending.empty() && ascending.back().tick == key.tick) {
            ascending.pop_back();
        }
        ascending.push_back(key);
    }
    value_ = std::move(ascending);
}

Matrix3 LocalTransform::at(TimeValue t, Interval& valid) const {
    if (const Matrix3* constant = std::get_if<Matrix3>(&value_)) {
        return *constant;
    }
    if (const Function* function = std::get_if<Function>(&value_)) {
        valid &= Interval(t, t);
        return (*function)(t);
    }

    // Finds the last key at or before `t`, or else the first key.
    const Keys& keys = *std::get_if<Keys>(&value_);
    const auto next =
        std::upper_bound(keys.begin() + 1, keys.end(), t,
                         [](TimeValue time, const TransformKey& key) { return time < key.tick; });
    const auto key = next - 1;
    valid &= Interval(key == keys.begin() ? TIME_NegInfinity : key->tick,
                      next == keys.end() ? TIME_PosInfinity : next->tick - 1);
    return key->matrix;
}

}  // namespace memhost
