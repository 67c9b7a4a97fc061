#include <cstdint>

#include "importers/sceneapi/dev/qorscene_api.h"
#include "importers/sceneapi/dev/qorsceneapi_oo.h"
#include "plugins/3dsmax/export/group_flags.h"
#include "plugins/3dsmax/export/name_notes.h"
#include "plugins/3dsmax/export/narrow_name.h"
#include "plugins/3dsmax/export/node_object.h"
#include "plugins/3dsmax/export/scene_exporter.h"

namespace {

template <typename Visit>
void ForEachLayer(Visit visit) {
    auto* layers = static_cast<IFPLayerManager*>(GetCOREInterface(LAYERMANAGER_INTERFACE));
    for (int i = 0; layers != nullptr && i < layers->getCount(); ++i) {
        visit(layers->getLayer(i));
    }
}

void BeginFlaggedGroup(qor::qorSceneapi_oo& scene, const std::string& name) {
    scene.begin_group(name);
    scene.get_api()->set_flags(kLayersFlag);
}

}  // namespace

std::vector<INode*> SceneExporter::LayerNodes() const {
    std::vector<INode*> all;
    ForEachLayer([&all](ILayerProperties* layer) {
        Tab<INode*> nodes;
        layer->Nodes(nodes);
        for (int i = 0; i < nodes.Count(); ++i) {
            all.push_back(nodes[i]);
        }
    });
    return all;
}

void SceneExporter::CountLayerNodes() {
    node_count_ += static_cast<std::uint32_t>(LayerNodes().size());
}

// A layer's nodes are written side by side, wherever they are in the tree, so they have world
// matrices.
void SceneExporter::ExportLayers() {
    ForEachLayer([this](ILayerProperties* layer) {
        BeginFlaggedGroup(*scene_, NarrowName(layer->getName()));
        Tab<INode*> nodes;
        layer->Nodes(nodes);
        NoteName(NotesOf(nullptr), layer->getName(), "the layer");
        SiblingNames names;
        for (int i = 0; i < nodes.Count(); ++i) {
            INode* node = nodes[i];
            ReportProgress(node);
            bool is_faithful = true;
            const std::string name = NarrowName(node->GetName(), is_faithful);
            if (notes_ != nullptr) {
                names.NoteNext(NotesOf(node), name, is_faithful);
            }
            BeginFlaggedGroup(*scene_, name);
            ExportLayerNode(node);
            scene_->end_group();
        }
        scene_->end_group();
    });
}

// In a scene by layers a node's group has no children, so a node that is hidden or has no object
// needs no matrix.
bool SceneExporter::ExportLayerNode(INode* node) {
    if (notes_ != nullptr) {
        notes_->begin_node();
    }
    if (node->IsNodeHidden(TRUE)) {
        NoteHiddenObject(node);
        return false;
    }
    Object* object = KindObject(node);
    if (object == nullptr) {
        return false;
    }
    // A scene by layers has deforming meshes even in the frames of an animation.
    constexpr bool kMayDeform = true;
    const bool has_content = ExportObject(node, object, kMayDeform);
    EmitNodeTransform(node, false, has_content);
    return has_content;
}
