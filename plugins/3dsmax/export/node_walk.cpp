#include <algorithm>
#include <vector>

#include "importers/sceneapi/dev/qorsceneapi_oo.h"
#include "plugins/3dsmax/export/light_converter.h"
#include "plugins/3dsmax/export/narrow_name.h"
#include "plugins/3dsmax/export/scene_exporter.h"

namespace {

// Calls `visit` for a node and everything below it, each node before its children. The tree can be
// deeper than the stack of the host's thread would bear as recursion.
template <typename Visit>
void ForEachNode(INode* top, Visit visit) {
    std::vector<INode*> waiting = {top};
    while (!waiting.empty()) {
        INode* node = waiting.back();
        waiting.pop_back();
        visit(node);
        for (int i = node->NumberOfChildren() - 1; i >= 0; --i) {
            waiting.push_back(node->GetChildNode(i));
        }
    }
}

// The kind of a node's object is asked for at tick 0; a conversion evaluates it at its own time.
Object* ObjectOf(INode* node) {
    const ObjectState state = node->EvalWorldState(0, TRUE);
    return state.obj;
}

}  // namespace

void SceneExporter::CountNodes(INode* node) {
    ForEachNode(node, [this](INode*) { ++node_count_; });
}

// Cameras come before everything else, and whether they are hidden plays no part.
void SceneExporter::ExportCameras(INode* node) {
    ForEachNode(node, [this](INode* candidate) {
        Object* object = ObjectOf(candidate);
        if (object != nullptr && object->SuperClassID() == CAMERA_CLASS_ID) {
            ExportCamera(candidate);
        }
    });
}

// A node's group holds the groups of its children, then the node's own objects, its matrix and its
// motion. True if the node or one below it was taken up.
bool SceneExporter::WalkNode(INode* top, bool in_group) {
    struct OpenNodeState {
        INode* node;
        bool in_group;
        int next_child = 0;
        bool has_content = false;
    };

    // The path from `top` down to the node under way.
    std::vector<OpenNodeState> path = {{top, in_group}};
    OpenNode(top, in_group);
    for (;;) {
        OpenNodeState& current = path.back();
        if (current.next_child < current.node->NumberOfChildren() && !host_->GetCancel()) {
            INode* child = current.node->GetChildNode(current.next_child);
            ++current.next_child;
            path.push_back({child, true});
            OpenNode(child, true);
            continue;
        }

        // After a cancel too: the groups that are open get what is theirs and are closed in order.
        const bool has_content = ExportNode(current.node, current.has_content);
        if (current.in_group) {
            scene_->end_group();
        }
        path.pop_back();
        if (path.empty()) {
            return has_content;
        }
        path.back().has_content = has_content || path.back().has_content;
    }
}

void SceneExporter::OpenNode(INode* node, bool in_group) {
    if (in_group) {
        scene_->begin_group(NarrowName(node->GetName()));
    }
    ReportProgress(node);
}

// Nodes that were not there when the nodes were counted don't take the bar past its end.
void SceneExporter::ReportProgress(INode* node) {
    ++nodes_done_;
    const float percent =
        static_cast<float>(nodes_done_) / static_cast<float>(node_count_) * 100.0f;
    host_->ProgressUpdate(static_cast<int>(std::min(percent, 100.0f)), FALSE, node->GetName());
}

// What a hidden node is made of stays out, but its place is kept for the nodes below it.
bool SceneExporter::ExportNode(INode* node, bool child_content) {
    bool has_content = child_content;
    if (!node->IsNodeHidden(TRUE)) {
        Object* object = ObjectOf(node);
        if (object == nullptr) {
            return has_content;  // the root of the tree, which has no place of its own
        }
        // In an animation each frame's file is a still.
        has_content = ExportObject(node, object, !animation_) || has_content;
    }
    EmitNodeTransform(node, true, has_content);
    return has_content;
}

// By layers nothing stands below a node, so one that is hidden or has no object needs no place.
bool SceneExporter::ExportLayerNode(INode* node) {
    if (node->IsNodeHidden(TRUE)) {
        return false;
    }
    Object* object = ObjectOf(node);
    if (object == nullptr) {
        return false;
    }
    // By layers meshes deform in the frames of an animation too.
    constexpr bool kMayDeform = true;
    const bool has_content = ExportObject(node, object, kMayDeform);
    EmitNodeTransform(node, false, has_content);
    return has_content;
}

// Gives the node to the conversion that its object asks for. Helpers, group heads and the targets
// of cameras and lights have none.
bool SceneExporter::ExportObject(INode* node, Object* object, bool may_deform) {
    switch (object->SuperClassID()) {
        case GEOMOBJECT_CLASS_ID: {
            if (object->ClassID() == Class_ID(TARGET_CLASS_ID, 0)) {
                return false;
            }
            const Interval valid = object->ObjectValidity(timing_.rangeStart);
            const bool deforms = may_deform && options_->Deformable && object->IsDeformable() &&
                                 !timing_.RangeIsWithin(valid);
            return deforms ? ExportDeformable(node) : ExportMesh(node);
        }
        case LIGHT_CLASS_ID:
            return ExportLight(node);
        case SHAPE_CLASS_ID:
            return ExportCurves(node);
        default:
            return false;
    }
}

bool SceneExporter::ExportLight(INode* node) {
    if (!NodeIsWanted(node)) {
        return false;
    }
    lights_->Convert(node, *scene_, timing_.time);
    return true;
}

// An update takes along only the objects of nodes that have changed.
bool SceneExporter::NodeIsWanted(INode* node) const {
    return !update_ || changed_nodes_.count(node) != 0;
}
