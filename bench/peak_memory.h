#pragma once

/// Prints how much memory each of the mesh benchmarks' exports takes at its peak, beyond the scene:
/// as a ratio to the mesh's copy and the arrays that it writes, or for the tree of boxes as it is.
void print_peak_memory();
