#pragma once

#include <string>

#include "plugins/3dsmax/export/host.h"

struct MaterialEntry;

enum class TextureKind { kDiffuse, kBump, kSpecular, kOpacity };

/// Makes `texmap` the entry's texture of that kind: for a bitmap map its file where it lies, for
/// any other map a picture of it in the renderer's folder for textures, named after `mtl`.
///
/// A null map, or one on a channel that the mesh lacks, changes nothing. A bitmap map whose file
/// can't be loaded leaves its channel and its transform, and the texture as it was.
void apply_texmap(MaterialEntry& entry, Mtl* mtl, const Mesh& mesh, Texmap* texmap,
                  TextureKind kind);

/// Draws `texmap`, as it is at time 0, into the image file `path`, which is in the host's 16-bit
/// units. A path is drawn once for as long as the plug-in is loaded, whether or not the file could
/// be written; only if there was no memory for the picture is it tried again the next time.
void bake_texmap(Texmap* texmap, const std::wstring& path);
