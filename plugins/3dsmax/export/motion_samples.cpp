#include "plugins/3dsmax/export/motion_samples.h"

#include <algorithm>
#include <unordered_set>

void MotionSamples::plan(const std::vector<Need>& needs, const FrameTiming& timing) {
    timing_ = timing;
    frames_ = 0;
    for (const TimeValue t : timing.Times()) {
        static_cast<void>(t);
        ++frames_;
    }
    batches_.clear();
    batch_of_.clear();
    has_samples_ = false;
    places_.clear();

    // A node and its parent are in one batch, which has room for these two at least.
    const std::size_t bytes_of_node = std::max<std::size_t>(frames_, 1) * sizeof(Matrix3);
    const std::size_t room = std::clamp<std::size_t>(max_bytes_ / bytes_of_node, 2, kMaxNodes);
    std::unordered_set<INode*> in_batch;
    for (const Need& need : needs) {
        const std::size_t added = (in_batch.count(need.node) == 0 ? 1u : 0u) +
                                  (need.parent && in_batch.count(need.parent) == 0 ? 1u : 0u);
        if (batches_.empty() || in_batch.size() + added > room) {
            batches_.emplace_back();
            in_batch.clear();
        }
        for (INode* const node : {need.node, need.parent}) {
            if (node && in_batch.insert(node).second) {
                batches_.back().push_back(node);
            }
        }
        batch_of_.emplace(need.node, batches_.size() - 1);
    }
}

void MotionSamples::prepare(INode* node) {
    const auto batch = batch_of_.find(node);
    if (batch != batch_of_.end() && (!has_samples_ || current_ != batch->second)) {
        sample(batch->second);
    }
}

void MotionSamples::sample(std::size_t batch) {
    const std::vector<INode*>& nodes = batches_[batch];
    places_.clear();
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        places_.emplace(nodes[i], i * frames_);
    }
    matrices_.resize(nodes.size() * frames_);
    // The frames of a node lie side by side, as a track reads them. A few frames are taken at a
    // time, so that the places between which this loop jumps stay in the processor's cache.
    constexpr std::size_t kFramesAtATime = 8;
    std::vector<Matrix3> taken(nodes.size() * kFramesAtATime);
    const auto move_to_places = [&](std::size_t end) {
        const std::size_t count = (end - 1) % kFramesAtATime + 1;
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            std::copy_n(taken.data() + i * kFramesAtATime, count,
                        matrices_.data() + i * frames_ + end - count);
        }
    };
    std::size_t frame = 0;
    for (const TimeValue t : timing_.Times()) {
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            taken[i * kFramesAtATime + frame % kFramesAtATime] = nodes[i]->GetNodeTM(t);
        }
        ++frame;
        if (frame % kFramesAtATime == 0 || frame == frames_) {
            move_to_places(frame);
        }
    }
    current_ = batch;
    has_samples_ = true;
}

const Matrix3* MotionSamples::of(INode* node) const {
    const auto place = places_.find(node);
    // There can be no frames, and then no matrices to point at.
    return place == places_.end() ? nullptr : matrices_.data() + place->second;
}
