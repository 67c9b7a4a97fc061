#pragma once

#include <memory>
#include <vector>

#include "plugins/3dsmax/export/frame_timing.h"
#include "plugins/3dsmax/export/host.h"
#include "plugins/3dsmax/export/options.h"

namespace qor {
class DeformableTriangleAnimation;
}

class MeshPartBuilder;

/// What came of a node's mesh over a range of frames.
struct DeformableCapture {
    /// One for each material that the faces have, with its library written where it can have one.
    std::vector<std::shared_ptr<qor::DeformableTriangleAnimation>> animations;
    /// Frames were left out since their faces name vertices that the mesh hasn't got.
    bool has_broken_frames = false;
    /// Parts go without texture coordinates, some of which point nowhere.
    bool has_broken_coordinates = false;
};

/// Evaluates the node at each frame of the range and gathers its mesh, part by part. The material
/// of a part is that of its first frame. A cancel in the host ends the range early, and what was
/// gathered so far stays.
DeformableCapture CaptureDeformable(INode* node, const FrameTiming& timing, Interface* host,
                                    const Qor::Options& options, MeshPartBuilder& parts);
