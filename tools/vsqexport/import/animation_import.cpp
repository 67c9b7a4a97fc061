#include "tools/vsqexport/import/animation_import.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <set>
#include <utility>

#include "tools/vsqexport/import/animation_choice.h"
#include "tools/vsqexport/import/left_out.h"
#include "tools/vsqexport/import/matrix_conversion.h"
#include "tools/vsqexport/import/pivot_helper.h"

namespace vsqexport {
namespace {

// Multiplying by the identity could change bits.
Matrix3 product(const Matrix3& first, const Matrix3& second) {
    return is_identity(first) ? second : is_identity(second) ? first : first * second;
}

}  // namespace

ModelAnimation::ModelAnimation(const aiScene& model, const NodeIndex& nodes,
                               ImportWarnings& warnings, const std::vector<std::string>& wanted,
                               const GltfCurves& curves) {
    for (const aiAnimation* animation : choose_animations(model, wanted, warnings)) {
        const auto place =
            std::find(model.mAnimations, model.mAnimations + model.mNumAnimations, animation);
        const auto number = static_cast<unsigned>(place - model.mAnimations);
        const auto curve_of = [&](const std::string& node, const char* path) {
            const auto found = curves.find({number, node, path});
            return found == curves.end() ? nullptr : &found->second;
        };
        read(*animation, nodes, ticks_per_second(model, *animation), curve_of, warnings);
    }

    constexpr double kLongestSeconds = 3600;
    if (end_seconds_ > kLongestSeconds) {
        char line[100];
        std::snprintf(line, sizeof line, "its animation lasts %.6g seconds, the range only %.6g",
                      end_seconds_, kLongestSeconds);
        warnings.push_back({"import-long-animation", line});
        end_seconds_ = kLongestSeconds;
    }
}

void ModelAnimation::read(const aiAnimation& animation, const NodeIndex& nodes,
                          double file_ticks_per_second, const CurveOf& curve_of,
                          ImportWarnings& warnings) {
    LeftOut left_out("motion of", "import-motion");
    int dropped_keys = 0;
    std::set<const aiNode*> own;
    for (unsigned i = 0; i < animation.mNumChannels; ++i) {
        const aiNodeAnim& channel = *animation.mChannels[i];
        const std::string name = channel.mNodeName.C_Str();
        const aiNode* node = nodes.find(channel.mNodeName);
        if (!node) {
            left_out.add(name, "no node has that name");
            continue;
        }
        if (!channel.mNumPositionKeys && !channel.mNumRotationKeys && !channel.mNumScalingKeys) {
            left_out.add(name, "it has no keys");
            continue;
        }
        const ChannelCurves curves = {curve_of(name, "translation"), curve_of(name, "rotation"),
                                      curve_of(name, "scale")};
        auto motion = std::make_shared<NodeMotion>(channel, node->mTransformation,
                                                   file_ticks_per_second, curves);
        const double end_seconds = motion->end_seconds();
        dropped_keys += motion->dropped_keys();
        if (!own.insert(node).second) {
            left_out.add(name, "the node has another one");
            continue;
        }
        // A node that rests in one animation can move in another.
        std::shared_ptr<const NodeMotion>& kept = motions_[node];
        if (!kept || moves(channel)) {
            kept = std::move(motion);
        }
        end_seconds_ = std::max(end_seconds_, end_seconds);
    }
    left_out.warn(warnings);
    read_morphs(animation, file_ticks_per_second, curve_of, dropped_keys, warnings);
    if (dropped_keys > 0) {
        warnings.push_back(
            {"import-keys", "keys of its animation are left out: " + std::to_string(dropped_keys) +
                                " hold NaN or infinity"});
    }
}

// Readers name a channel after the node or the mesh, and some add a star and a number.
void ModelAnimation::read_morphs(const aiAnimation& animation, double file_ticks_per_second,
                                 const CurveOf& curve_of, int& dropped_keys,
                                 ImportWarnings& warnings) {
    for (unsigned i = 0; i < animation.mNumMorphMeshChannels; ++i) {
        const aiMeshMorphAnim& channel = *animation.mMorphMeshChannels[i];
        const std::string full_name = channel.mName.C_Str();
        const std::string name = full_name.substr(0, full_name.rfind('*'));
        const GltfCurve* const curve = curve_of(name, "weights");
        Interpolation interpolation = curve ? curve->interpolation : Interpolation::kLinear;
        if (interpolation == Interpolation::kCubic) {
            interpolation = Interpolation::kLinear;
            warnings.push_back({"import-motion",
                                "the weights of \"" + name + "\" lie on a spline: taken as linear",
                                "changed"});
        }
        const auto motion =
            std::make_shared<MorphMotion>(channel, file_ticks_per_second, interpolation);
        dropped_keys += motion->dropped_keys();
        end_seconds_ = std::max(end_seconds_, motion->end_seconds());
        morphs_.emplace(name, motion);
    }
}

std::shared_ptr<const NodeMotion> ModelAnimation::motion_of(const aiNode& node) const {
    const auto found = motions_.find(&node);
    return found == motions_.end() ? nullptr : found->second;
}

std::shared_ptr<const MorphMotion> ModelAnimation::morph_of(const aiNode& node,
                                                            const aiMesh& mesh) const {
    for (const aiString& name : {node.mName, mesh.mName}) {
        if (const auto found = morphs_.find(name.C_Str()); found != morphs_.end()) {
            return found->second;
        }
    }
    return nullptr;
}

memhost::LocalTransform ModelAnimation::place(const aiNode& node, const Matrix3& before,
                                              const Matrix3& after) const {
    struct Step {
        Matrix3 rest;
        std::shared_ptr<const NodeMotion> motion;  // null if the node never moves
    };
    std::vector<Step> steps;
    bool is_still = true;
    for (const aiNode* each = &node; each && (each == &node || is_pivot_helper(*each));
         each = each->mParent) {
        std::shared_ptr<const NodeMotion> motion = motion_of(*each);
        Step step = {motion ? motion->at(0) : host_matrix(each->mTransformation), nullptr};
        if (motion && !motion->is_still()) {
            step.motion = std::move(motion);
            is_still = false;
        }
        steps.push_back(std::move(step));
    }
    const auto at = [steps = std::move(steps), before, after](TimeValue t) {
        Matrix3 matrix = before;
        for (const Step& step : steps) {
            matrix = product(matrix, step.motion ? step.motion->at(t) : step.rest);
        }
        return product(matrix, after);
    };
    return is_still ? memhost::LocalTransform(at(0)) : memhost::LocalTransform(at);
}

void ModelAnimation::set_range(memhost::SceneBuilder& scene) const {
    if (end_seconds_ <= 0.0) {
        return;
    }
    constexpr double kTimeNoise = 1e-3;  // in frames; keys at whole frames are often rounded
    const double frames = end_seconds_ * TIME_TICKSPERSEC / scene.host().ticks_per_frame();
    scene.animation_frames(0, std::max(1, static_cast<int>(std::ceil(frames - kTimeNoise))));
}

}  // namespace vsqexport
