#pragma once

#include <map>
#include <memory>
#include <string>

#include "tools/vsqpicture/picture_scene.h"

namespace vsqpicture {

/// Reads the mesh file at `path` as it is at a frame: that of the last record whose number isn't
/// beyond it, or of the first. Throws `std::runtime_error` with one line.
std::shared_ptr<const Mesh> read_mesh_file(const std::string& path, double frame);

}  // namespace vsqpicture
