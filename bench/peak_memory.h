#pragma once

/// Prints the peak memory of each mesh benchmark's export, beyond the scene: as a ratio to the
/// sizes of the mesh's copy and the written arrays, or in MiB for the trees of boxes.
void print_peak_memory();
