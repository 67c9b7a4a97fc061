#pragma once

#include "plugins/3dsmax/export/host.h"

struct MaterialEntry;

/// Fills `entry` from a material of the host, of whatever class: its colours at the entry's time,
/// and those of its maps that have a counterpart and a channel in `mesh`. `mtl` isn't null.
void convert_material(MaterialEntry& entry, const Mesh& mesh, Mtl* mtl);
