#pragma once

#include <cstddef>
#include <unordered_map>
#include <vector>

#include "plugins/3dsmax/export/frame_timing.h"
#include "plugins/3dsmax/export/host.h"

/// The world matrices of moving nodes at all frames of the range.
///
/// The host sets itself to a new time for each frame, and a node's matrix needs those of all nodes
/// above it. So all nodes are asked at one frame before any is asked at the next. Memory is
/// bounded: if the samples of all nodes take more, they are taken in batches, each when its first
/// node is needed.
class MotionSamples {
public:
    static constexpr std::size_t kMaxBytes = std::size_t{64} << 20;
    /// What the host looks at for so many nodes stays in the processor's cache from one frame to
    /// the next.
    static constexpr std::size_t kMaxNodes = 1024;

    /// A node of which matrices are needed, and its parent, or null if the parent's aren't.
    struct Need {
        INode* node;
        INode* parent;
    };

    explicit MotionSamples(std::size_t max_bytes = kMaxBytes) : max_bytes_(max_bytes) {}

    /// Takes the nodes in the order in which they will be asked for, and samples none of them yet.
    void plan(const std::vector<Need>& needs, const FrameTiming& timing);

    /// Samples the node's batch, unless that is the current one. Later calls for nodes of other
    /// batches drop these samples. Does nothing for a node that isn't planned.
    void prepare(INode* node);

    /// The current samples of a node, one for each frame; null if it has none.
    const Matrix3* of(INode* node) const;

private:
    void sample(std::size_t batch);

    std::size_t max_bytes_;
    FrameTiming timing_{};
    std::size_t frames_ = 0;
    std::vector<std::vector<INode*>> batches_;
    std::unordered_map<INode*, std::size_t> batch_of_;  // of planned nodes, not of their parents
    std::size_t current_ = 0;                           // the batch whose samples are here
    bool has_samples_ = false;
    std::unordered_map<INode*, std::size_t> places_;  // of the current batch in `matrices_`
    std::vector<Matrix3> matrices_;  // all frames of a node, then those of the next
};
