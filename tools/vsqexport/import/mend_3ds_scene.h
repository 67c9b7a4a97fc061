#pragma once

#include <filesystem>

#include <assimp/scene.h>

namespace vsqexport {

/// Gives the cameras and lights of a 3DS file what assimp's reader loses on the way.
///
/// The file gives a camera a place, a target and a roll. The reader drops the target, so that all
/// cameras look straight up, rolls them around the wrong axis, and gives places twice, in the node
/// and in the camera or light. Afterwards the nodes alone hold it all, their motion included. The
/// aim of a camera that hangs on another node is left as it is.
void mend_3ds_scene(const aiScene& model, const std::filesystem::path& file);

}  // namespace vsqexport
