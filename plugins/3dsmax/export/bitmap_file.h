#pragma once

#include <optional>
#include <string>

#include "plugins/3dsmax/export/export_notes.h"
#include "plugins/3dsmax/export/host.h"

/// Whether `texmap` is the host's own map for image files, and so a `BitmapTex`.
bool is_bitmap_texmap(Texmap* texmap);

/// The absolute path of the map's file at frame 0, in the form of `NarrowName`. No value if the
/// bitmap can't be loaded.
std::optional<std::string> bitmap_file(BitmapTex& texmap, TimeValue time,
                                       const NodeNotes& notes = {});
