#pragma once

#include <cstdint>
#include <optional>

#include "tools/vsqpicture/camera_view.h"
#include "tools/vsqpicture/image.h"
#include "tools/vsqpicture/ray_scene.h"
#include "tools/vsqpicture/sky.h"

namespace vsqpicture {

struct PictureOptions {
    int width = 640;
    int height = 360;
    int samples = 32;  ///< for each pixel
    std::uint64_t seed = 1;
    unsigned threads = 0;      ///< 0: as many as there are cores
    bool transparent = false;  ///< pixels that hit nothing are clear
    /// By how many stops the picture is brighter than a white surface at 1 candela per square metre
    /// would need. Nothing: chosen so that the scene is neither dark nor glaring.
    std::optional<double> exposure;
};

/// Draws a scene by following paths of light with up to three bounces.
///
/// The bytes depend on the scene, the view and the options, but not on the number of threads: each
/// sample of each pixel has a sequence of random numbers of its own.
Image draw_picture(const RayScene& scene, const Sky& sky, const CameraView& view,
                   const PictureOptions& options, double units_per_metre);

}  // namespace vsqpicture
