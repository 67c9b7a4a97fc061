#pragma once

#include <cstddef>
#include <vector>

#include "standins/host/sdk/maxtypes.h"

/// The host's growing array of plain values and pointers.
template <typename T>
class Tab {
public:
    int Count() const { return static_cast<int>(items_.size()); }

    /// As in the genuine host, the elements of a const table are writable.
    T& operator[](int i) const { return items_[static_cast<std::size_t>(i)]; }

    /// Appends copies of `n` items and reserves room for `extra` more. Returns the index of the
    /// first.
    int Append(int n, T* items, int extra = 0) {
        const int first = Count();
        if (extra > 0) {
            items_.reserve(items_.size() + static_cast<std::size_t>(n) +
                           static_cast<std::size_t>(extra));
        }
        items_.insert(items_.end(), items, items + n);
        return first;
    }

    void SetCount(int n, BOOL = TRUE) { items_.resize(static_cast<std::size_t>(n)); }

private:
    mutable std::vector<T> items_;
};
