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

/// Evaluates the node at each frame of the range and gathers its mesh. Gives one animation for each
/// material that the faces have, with its library written where it can have one. The material of a
/// part is that of its first frame. A cancel in the host ends the range early, and what was
/// gathered so far stays.
std::vector<std::shared_ptr<qor::DeformableTriangleAnimation>> CaptureDeformable(
    INode* node, const FrameTiming& timing, Interface* host, const Qor::Options& options,
    MeshPartBuilder& parts);
