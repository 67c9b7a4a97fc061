#include <string>

#include "importers/sceneapi/dev/qorsceneapi_oo.h"
#include "plugins/3dsmax/export/light_converter.h"
#include "plugins/3dsmax/export/node_object.h"
#include "plugins/3dsmax/export/scene_exporter.h"

// Chooses the conversion for a node's object.

// A hidden node's object is left out, but its matrix is written for the nodes below it.
bool SceneExporter::ExportNode(INode* node, bool child_content) {
    bool has_content = child_content;
    if (notes_ != nullptr) {
        notes_->begin_node();
    }
    if (node->IsNodeHidden(TRUE)) {
        NoteHiddenObject(node);
    } else {
        Object* object = KindObject(node);
        if (object == nullptr) {
            return has_content;  // the root of the tree, which has no matrix
        }
        // In an animation each frame's file is a still.
        has_content = ExportObject(node, object, !animation_) || has_content;
    }
    EmitNodeTransform(node, true, has_content);
    return has_content;
}

// Passes the node to the conversion for its object. Helpers, group heads and the targets of cameras
// and lights have none.
bool SceneExporter::ExportObject(INode* node, Object* object, bool may_deform) {
    switch (object->SuperClassID()) {
        case GEOMOBJECT_CLASS_ID: {
            if (object->ClassID() == Class_ID(TARGET_CLASS_ID, 0)) {
                return false;
            }
            const Interval valid = object->ObjectValidity(timing_.rangeStart);
            const bool deforms = may_deform && options_->Deformable && object->IsDeformable() &&
                                 !timing_.RangeIsWithin(valid);
            if (!deforms && may_deform && !animation_) {
                NoteShapeOverTime(node, valid,
                                  options_->Deformable ? "the object can't deform"
                                                       : "the setting Deformable is off");
            }
            return deforms ? ExportDeformable(node) : ExportMesh(node);
        }
        case LIGHT_CLASS_ID:
            return ExportLight(node);
        case SHAPE_CLASS_ID:
            if (notes_ != nullptr && !animation_ && options_->GeneralCurves &&
                object->IsRenderable()) {
                NoteShapeOverTime(node, object->ObjectValidity(timing_.rangeStart),
                                  "curves have no frames");
            }
            return ExportCurves(node);
        case CAMERA_CLASS_ID:
            if (!options_->cameras) {
                NotesOf(node).add(Note::kCameraSwitchedOff);
            }
            return false;
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

// An update includes only the objects of nodes that have changed.
bool SceneExporter::NodeIsWanted(INode* node) const {
    return !update_ || changed_nodes_.count(node) != 0;
}

// Only geometry, lights and shapes would go out. The target of a camera or light is geometry, but
// gives nothing.
void SceneExporter::NoteHiddenObject(INode* node) {
    Object* const object = notes_ == nullptr ? nullptr : KindObject(node);
    if (object == nullptr) {
        return;
    }
    const SClass_ID kind = object->SuperClassID();
    if (kind == LIGHT_CLASS_ID || kind == SHAPE_CLASS_ID ||
        (kind == GEOMOBJECT_CLASS_ID && object->ClassID() != Class_ID(TARGET_CLASS_ID, 0))) {
        NotesOf(node).add(Note::kNodeHidden);
    }
}

void SceneExporter::NoteShapeOverTime(INode* node, const Interval& valid, const char* why) {
    if (notes_ != nullptr && !timing_.RangeIsWithin(valid) && NodeIsWanted(node)) {
        NotesOf(node).add(Note::kShapeAtOneTime, why);
    }
}

void SceneExporter::NoteMissingObject(INode* node) {
    if (notes_ != nullptr) {
        NotesOf(node).add(Note::kObjectMissing, "at tick " + std::to_string(timing_.time));
    }
}
