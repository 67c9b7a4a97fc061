#pragma once

#include "plugins/3dsmax/export/host.h"

struct MaterialEntry;

/// Fills `entry` from a host material of any class. Colours are read at the entry's time if the
/// class takes one. Maps are used if they have a counterpart in the renderer and `mesh` has their
/// channel. `mtl` must not be null.
void convert_material(MaterialEntry& entry, const Mesh& mesh, Mtl* mtl);
