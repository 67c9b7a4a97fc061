#pragma once

#include <memory>
#include <vector>

#include "plugins/3dsmax/export/export_notes.h"
#include "plugins/3dsmax/export/frame_timing.h"
#include "plugins/3dsmax/export/host.h"
#include "plugins/3dsmax/export/options.h"

namespace qor {
class DeformableTriangleAnimation;
}

class MeshPartBuilder;

/// Captures the mesh of the node at each frame of the range. Returns one animation for each
/// material that the faces use, and writes the library of each animation that can have one. A part
/// keeps the material of its first frame. If the user cancels, the frames captured so far are kept.
std::vector<std::shared_ptr<qor::DeformableTriangleAnimation>> CaptureDeformable(
    INode* node, const FrameTiming& timing, Interface* host, const Qor::Options& options,
    MeshPartBuilder& parts, ExportNotes* notes = nullptr);
