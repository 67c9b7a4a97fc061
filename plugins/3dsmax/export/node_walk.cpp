#include <algorithm>
#include <string>
#include <vector>

#include "importers/sceneapi/dev/qorsceneapi_oo.h"
#include "plugins/3dsmax/export/name_notes.h"
#include "plugins/3dsmax/export/narrow_name.h"
#include "plugins/3dsmax/export/node_object.h"
#include "plugins/3dsmax/export/scene_exporter.h"

namespace {

// Calls `visit` for a node and everything below it, each node before its children. Not recursive,
// since a deep tree could overflow the stack of the host's thread.
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

}  // namespace

void SceneExporter::CountNodes(INode* node) {
    ForEachNode(node, [this](INode*) { ++node_count_; });
}

// Cameras are written before everything else, hidden ones included.
void SceneExporter::ExportCameras(INode* node) {
    ForEachNode(node, [this](INode* candidate) {
        Object* object = KindObject(candidate);
        if (object != nullptr && object->SuperClassID() == CAMERA_CLASS_ID) {
            ExportCamera(candidate);
        }
    });
}

// A node's group holds the groups of its children, then the node's own objects, its matrix and its
// motion. True if the node or one below it has content.
bool SceneExporter::WalkNode(INode* top, bool in_group) {
    struct VisitedNode {
        INode* node;
        int next_child = 0;
        bool has_content = false;
        SiblingNames names_of_children = {};
    };

    // The path from `top` down to the current node. Every node below `top` has a group.
    std::vector<VisitedNode> path = {{top}};
    SiblingNames top_alone;
    OpenNode(top, in_group, top_alone);
    for (;;) {
        VisitedNode& current = path.back();
        const bool has_child = current.next_child < current.node->NumberOfChildren();
        const bool is_cancelled = has_child && host_->GetCancel();
        if (is_cancelled) {
            NoteCancel(std::to_string(nodes_done_) + " of " + std::to_string(node_count_) +
                       " nodes were reached");
        }
        if (has_child && !is_cancelled) {
            INode* child = current.node->GetChildNode(current.next_child);
            ++current.next_child;
            OpenNode(child, true, current.names_of_children);
            path.push_back({child});
            continue;
        }

        // After a cancel, too, the open groups get their own content and are closed in order.
        const bool has_content = ExportNode(current.node, current.has_content);
        path.pop_back();
        if (in_group || !path.empty()) {
            scene_->end_group();
        }
        if (path.empty()) {
            return has_content;
        }
        path.back().has_content = has_content || path.back().has_content;
    }
}

void SceneExporter::OpenNode(INode* node, bool in_group, SiblingNames& siblings) {
    if (in_group) {
        bool is_faithful = true;
        const std::string name = NarrowName(node->GetName(), is_faithful);
        scene_->begin_group(name);
        if (notes_ != nullptr) {
            siblings.NoteNext(NotesOf(node), name, is_faithful);
        }
    }
    ReportProgress(node);
}

// Nodes added after the count don't take the bar past its end.
void SceneExporter::ReportProgress(INode* node) {
    ++nodes_done_;
    const float percent =
        static_cast<float>(nodes_done_) / static_cast<float>(node_count_) * 100.0f;
    host_->ProgressUpdate(static_cast<int>(std::min(percent, 100.0f)), FALSE, node->GetName());
}
