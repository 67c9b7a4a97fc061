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

/// The transforms of some nodes of a model over time, relative to one of them.
class ModelPose {
public:
    ModelPose(const aiNode& base, const ModelAnimation& animation) : base_(add(base, animation)) {}

    /// Returns the node's index in the list that `at` fills.
    std::size_t add(const aiNode& node, const ModelAnimation& animation);

    bool is_still() const;

    /// Fills `base_from_node` with the matrices of all added nodes and of their ancestors.
    void at(TimeValue t, std::vector<Matrix3>& base_from_node) const;

    /// The ticks around `t` at which all nodes stay where they are.
    Interval validity(TimeValue t) const;

private:
    struct Joint {
        std::shared_ptr<const NodeMotion> motion;  // null if the node never moves
        Matrix3 rest;
        std::size_t parent;  // the index of an earlier joint, or its own index at the top
    };

    std::vector<Joint> joints_;
    std::map<const aiNode*, std::size_t> numbers_;
    std::size_t base_;
};

}  // namespace vsqexport
