#include <cstddef>
#include <vector>

#include "plugins/3dsmax/export/motion_samples.h"
#include "plugins/3dsmax/export/node_object.h"
#include "plugins/3dsmax/export/scene_exporter.h"

// Chooses the nodes whose motion is sampled ahead. A node that is missing here is sampled when its
// track is written; one too many costs only time.

namespace {

struct PlannedNode {
    INode* node;
    std::size_t parent;  // an earlier place in the list, or its own at the top
    bool has_content = false;
};

// Each node before those below it, in the order of the children.
std::vector<PlannedNode> NodesBelow(INode* top) {
    std::vector<PlannedNode> all;
    std::vector<PlannedNode> waiting = {{top, 0}};
    while (!waiting.empty()) {
        all.push_back(waiting.back());
        waiting.pop_back();
        const std::size_t place = all.size() - 1;
        INode* const node = all.back().node;
        for (int i = node->NumberOfChildren() - 1; i >= 0; --i) {
            waiting.push_back({node->GetChildNode(i), place});
        }
    }
    return all;
}

// Calls `visit` for each node behind those below it, as the walk writes them.
template <typename Visit>
void ForEachInOrderOfWriting(const std::vector<PlannedNode>& nodes, const Visit& visit) {
    std::vector<std::size_t> path;
    const auto leave = [&] {
        visit(nodes[path.back()]);
        path.pop_back();
    };
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        while (!path.empty() && path.back() != nodes[i].parent) {
            leave();
        }
        path.push_back(i);
    }
    while (!path.empty()) {
        leave();
    }
}

bool IsCamera(Object* object) {
    return object != nullptr && object->SuperClassID() == CAMERA_CLASS_ID;
}

}  // namespace

// Whether the conversion of a node's object can write something.
bool SceneExporter::MayHaveContent(INode* node, Object* object) const {
    if (object == nullptr || node->IsNodeHidden(TRUE)) {
        return false;
    }
    switch (object->SuperClassID()) {
        case GEOMOBJECT_CLASS_ID:
            return object->ClassID() != Class_ID(TARGET_CLASS_ID, 0) && NodeIsWanted(node);
        case LIGHT_CLASS_ID:
            return NodeIsWanted(node);
        case SHAPE_CLASS_ID:
            return options_->HairAndFur || (options_->GeneralCurves && NodeIsWanted(node));
        default:
            return false;
    }
}

void SceneExporter::PlanMotion() {
    const bool with_nodes = options_->TransformAnimations && !(update_ && changed_nodes_.empty());
    const bool with_cameras = options_->cameras && options_->CameraAnimations;
    std::vector<INode*> cameras;
    std::vector<INode*> others;
    // All objects are evaluated at tick 0, as in the walk, before any matrix at the pass's time.
    if (with_cameras || (with_nodes && !options_->Layers)) {
        std::vector<PlannedNode> nodes = NodesBelow(root_node_);
        for (PlannedNode& planned : nodes) {
            Object* const object = KindObject(planned.node);
            if (with_cameras && IsCamera(object)) {
                cameras.push_back(planned.node);
            }
            planned.has_content =
                with_nodes && !options_->Layers && MayHaveContent(planned.node, object);
        }
        for (std::size_t i = nodes.size(); i-- > 1;) {
            PlannedNode& parent = nodes[nodes[i].parent];
            parent.has_content = parent.has_content || nodes[i].has_content;
        }
        ForEachInOrderOfWriting(nodes, [&others](const PlannedNode& planned) {
            if (planned.has_content) {
                others.push_back(planned.node);
            }
        });
    }
    if (with_nodes && options_->Layers) {
        for (INode* const node : LayerNodes()) {
            if (MayHaveContent(node, KindObject(node))) {
                others.push_back(node);
            }
        }
    }

    std::vector<MotionSamples::Need> needs;
    const auto add_if_it_moves = [this, &needs](INode* node, bool relative_to_parent) {
        Interval valid = FOREVER;
        node->GetNodeTM(timing_.time, &valid);
        if (!timing_.RangeIsWithin(valid)) {
            needs.push_back({node, relative_to_parent ? node->GetParentNode() : nullptr});
        }
    };
    for (INode* const node : cameras) {
        add_if_it_moves(node, false);
    }
    for (INode* const node : others) {
        add_if_it_moves(node, !options_->Layers);
    }
    motion_->plan(needs, timing_);
}
