#pragma once

#include <filesystem>

#include <assimp/scene.h>

namespace vsqexport {

/// Restores the data on the cameras and lights of a 3DS file that assimp's reader loses.
///
/// The file gives a camera a position, a target and a roll. The reader drops the target, so that
/// all cameras look straight up. It also rolls them around the wrong axis, and repeats the position
/// of a node in its camera or light. Afterwards only the nodes hold positions, directions and
/// motion. A camera whose node is a child of another node keeps the direction that it has.
void mend_3ds_scene(const aiScene& model, const std::filesystem::path& file);

}  // namespace vsqexport
