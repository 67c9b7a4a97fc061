#pragma once

#include <string>

#include "plugins/3dsmax/export/host.h"

struct MaterialEntry;

enum class BakeResult { kWritten, kNotWritten, kNotDrawn };

enum class TextureKind { kDiffuse, kBump, kSpecular, kOpacity };

/// Makes `texmap` the entry's texture of that kind. For a bitmap map the texture is its own file.
/// Any other map is drawn into a picture in the renderer's folder for textures, named after `mtl`.
///
/// Changes nothing if the map is null or the mesh lacks its channel. If the file of a bitmap map
/// can't be loaded, the entry takes the map's channel and transform but keeps its texture.
void apply_texmap(MaterialEntry& entry, Mtl* mtl, const Mesh& mesh, Texmap* texmap,
                  TextureKind kind);

/// Draws `texmap`, as it is at time 0, into the image file `path`, which is in the host's 16-bit
/// units. Each path is drawn once while the plug-in is loaded, whether or not the file could be
/// written. Only if the bitmap couldn't be created does the next call try again. Returns what
/// became of the path when it was drawn.
BakeResult bake_texmap(Texmap* texmap, const std::wstring& path);
