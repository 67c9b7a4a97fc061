#pragma once

#include <cstddef>
#include <cstdio>
#include <cstdlib>

namespace memhost {

/// `i` as an index into `count` elements. Ends the program for any other number, since the genuine
/// host doesn't check it and reads whatever lies there.
inline std::size_t checked_index(int i, std::size_t count, const char* what) {
    if (i < 0 || static_cast<std::size_t>(i) >= count) {
        std::fprintf(stderr, "there is no %s %d: there are %zu\n", what, i, count);
        std::abort();
    }
    return static_cast<std::size_t>(i);
}

}  // namespace memhost
