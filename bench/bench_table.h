#pragma once

#include <string>

/// One row of the table that ends a run: how the median time of one benchmark stands to that of
/// another, and what is wanted of it.
struct BenchRatio {
    std::string what;
    std::string ours;
    std::string peer;
    double at_most;  ///< the ratio wanted; 0 where none is
};

/// Adds a row. Benchmarks call this as they register themselves.
bool compare(BenchRatio ratio);
