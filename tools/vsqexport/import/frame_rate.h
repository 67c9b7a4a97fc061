#pragma once

#include <optional>

#include <assimp/scene.h>

#include "tools/vsqexport/import/collada_text.h"

namespace vsqexport {

/// The frames per second for which a model is made: an FBX or COLLADA file can say so, and keys of
/// a glTF file lie on frames. Nothing if the file doesn't tell. `collada` is empty for other files.
std::optional<double> frame_rate_of(const aiScene& model, const ColladaText& collada);

}  // namespace vsqexport
