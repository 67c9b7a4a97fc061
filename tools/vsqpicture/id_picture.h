#pragma once

#include <cstdint>
#include <string>

#include "tools/vsqpicture/camera_view.h"
#include "tools/vsqpicture/image.h"
#include "tools/vsqpicture/ray_scene.h"

namespace vsqpicture {

/// The colour of an object in a picture of ids, as 0xRRGGBB; never black, and another one for each
/// object.
std::uint32_t id_colour(std::size_t object);

/// Draws each object in its colour, through the middle of each pixel, and black where nothing is.
Image draw_ids(const RayScene& scene, const CameraView& view, int width, int height);

/// Which object has which colour, as a JSON array: colour, path of the groups, name, and a number
/// for objects that have both in common; and how many pixels of `image` it has.
std::string ids_json(const RayScene& scene, const Image& image);

}  // namespace vsqpicture
