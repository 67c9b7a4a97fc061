#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <vector>

#include <assimp/scene.h>

#include "standins/host/sdk/max.h"
#include "tools/vsqexport/import/animation_import.h"
#include "tools/vsqexport/import/node_motion.h"

namespace vsqexport {

/// Where some nodes of a model are over time, as seen from one of them.
class ModelPose {
public:
    ModelPose(const aiNode& base, const ModelAnimation& animation) : base_(add(base, animation)) {}

    /// Gives the node's place in the lists of `at`.
    std::size_t add(const aiNode& node, const ModelAnimation& animation);

    bool is_still() const;

    /// Fills `base_from_node` with the matrices of all nodes added and of those above them.
    void at(TimeValue t, std::vector<Matrix3>& base_from_node) const;

    /// The ticks around `t` at which everything stays where it is.
    Interval validity(TimeValue t) const;

private:
    struct Joint {
        std::shared_ptr<const NodeMotion> motion;  // null for one that stays
        Matrix3 rest;
        std::size_t parent;  // an earlier joint, or itself at the top
    };

    std::vector<Joint> joints_;
    std::map<const aiNode*, std::size_t> numbers_;
    std::size_t base_;
};

}  // namespace vsqexport
