#include "tools/vsqexport/import/model_pose.h"

#include "tools/vsqexport/import/matrix_conversion.h"

namespace vsqexport {

std::size_t ModelPose::add(const aiNode& node, const ModelAnimation& animation) {
    std::vector<const aiNode*> missing;
    for (const aiNode* above = &node; above && numbers_.count(above) == 0; above = above->mParent) {
        missing.push_back(above);
    }
    for (; !missing.empty(); missing.pop_back()) {
        const aiNode& next = *missing.back();
        const std::size_t number = joints_.size();
        const auto parent = numbers_.find(next.mParent);
        Joint joint = {animation.motion_of(next), host_matrix(next.mTransformation),
                       parent == numbers_.end() ? number : parent->second};
        if (joint.motion && joint.motion->is_still()) {
            joint.rest = joint.motion->at(0);
            joint.motion = nullptr;
        }
        joints_.push_back(joint);
        numbers_.emplace(&next, number);
    }
    return numbers_.at(&node);
}

bool ModelPose::is_still() const {
    for (const Joint& joint : joints_) {
        if (joint.motion) {
            return false;
        }
    }
    return true;
}

void ModelPose::at(TimeValue t, std::vector<Matrix3>& base_from_node) const {
    base_from_node.resize(joints_.size());
    for (std::size_t i = 0; i < joints_.size(); ++i) {
        const Joint& joint = joints_[i];
        const Matrix3 local = joint.motion ? joint.motion->at(t) : joint.rest;
        base_from_node[i] = joint.parent == i ? local : local * base_from_node[joint.parent];
    }
    const Matrix3 base_from_world = inverse_or_identity(base_from_node[base_]);
    for (Matrix3& matrix : base_from_node) {
        matrix *= base_from_world;
    }
}

Interval ModelPose::validity(TimeValue t) const {
    Interval valid = FOREVER;
    for (const Joint& joint : joints_) {
        if (joint.motion) {
            joint.motion->narrow_to_rest(t, valid);
        }
    }
    return valid;
}

}  // namespace vsqexport
