#pragma once

#include <string>

/// One row of the table at the end of a run: the ratio of two benchmarks' median times, and its
/// target.
struct BenchRatio {
    std::string what;
    std::string ours;
    std::string peer;
    double at_most;  ///< the target; 0 if there is none
};

/// Adds a row. Benchmarks call this when they register themselves.
bool compare(BenchRatio ratio);
