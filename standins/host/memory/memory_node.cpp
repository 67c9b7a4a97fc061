#include "standins/host/memory/memory_node.h"

#include <algorithm>
#include <utility>

#include "standins/host/memory/host_text.h"
#include "standins/host/memory/memory_host.h"
#include "standins/host/memory/strict_rules.h"
#include "standins/host/memory/timed_object.h"

namespace memhost {

MemoryNode::MemoryNode(MemoryHost& host, MemoryNode* parent, const std::wstring& name)
    : host_(host), parent_(parent) {
    set_name(name);
    if (parent_) {
        parent_->children_.push_back(this);
        layer_ = &host_.layers().default_layer();
        layer_->add(*this);
    }
}

void MemoryNode::set_name(const std::wstring& name) {
    name_ = units_from_wide(name.substr(0, name.find(L'\0')));
    note(&INodeEventCallback::NameChanged);
}

void MemoryNode::set_local_transform(LocalTransform transform) {
    local_ = std::move(transform);
    host_.transforms_changed();
    note(&INodeEventCallback::ControllerOtherEvent);
}

void MemoryNode::set_object_offset(const Matrix3& node_from_object) {
    object_offset_ = node_from_object;
    note(&INodeEventCallback::ControllerOtherEvent);
}

void MemoryNode::set_object(std::shared_ptr<Object> object) {
    object_ = std::move(object);
    timed_object_ = dynamic_cast<TimedObject*>(object_.get());
    note(&INodeEventCallback::ModelStructured);
}

void MemoryNode::set_hidden(bool hidden) {
    hidden_ = hidden;
    note(&INodeEventCallback::HideChanged);
}

void MemoryNode::set_layer(MemoryLayer& layer) {
    if (!layer_) {
        return;
    }
    layer_->remove(*this);
    layer_ = &layer;
    layer_->add(*this);
    note(&INodeEventCallback::LayerChanged);
}

void MemoryNode::set_wire_color(COLORREF color) {
    wire_color_ = color;
    note(&INodeEventCallback::WireColorChanged);
}

void MemoryNode::set_hair(std::shared_ptr<const HairModifier> hair) {
    hair_ = std::move(hair);
    note(&INodeEventCallback::ModelStructured);
}

void MemoryNode::set_material(Mtl* material) {
    material_ = material;
    note(&INodeEventCallback::MaterialStructured);
}

void MemoryNode::note(NodeEvent event) {
    host_.events().note(event, *this);
}

void MemoryNode::leave_tree() {
    std::vector<MemoryNode*>& siblings = parent_->children_;
    siblings.erase(std::find(siblings.begin(), siblings.end(), this));
    for (MemoryNode* child : children_) {
        child->parent_ = parent_;
        siblings.push_back(child);
    }
    layer_->remove(*this);
    host_.transforms_changed();
}

bool MemoryNode::knows_world_at(TimeValue t) const {
    return world_.version == host_.transform_version() && world_.valid.InInterval(t);
}

// The parent's matrix must be known.
void MemoryNode::compute_world_at(TimeValue t) {
    host_.note_evaluation(t, true);
    Interval valid = parent_ ? parent_->world_.valid : FOREVER;
    Matrix3 matrix = local_.at(t, valid);
    if (parent_) {
        matrix *= parent_->world_.matrix;
    }
    world_ = {matrix, valid, host_.transform_version()};
}

const MemoryNode::WorldMatrix& MemoryNode::world_at(TimeValue t) {
    host_.note_evaluation(t, false);
    if (knows_world_at(t)) {
        return world_;
    }

    // Goes up to the nearest ancestor whose matrix is known, then down again. In a walk from the
    // root that ancestor is the parent, and `unknown` stays empty.
    std::vector<MemoryNode*> unknown;
    for (MemoryNode* node = parent_; node && !node->knows_world_at(t); node = node->parent_) {
        unknown.push_back(node);
    }
    for (; !unknown.empty(); unknown.pop_back()) {
        unknown.back()->compute_world_at(t);
    }
    compute_world_at(t);
    return world_;
}

Matrix3 MemoryNode::GetNodeTM(TimeValue t, Interval* valid) {
    const WorldMatrix& world = world_at(t);
    if (valid) {
        *valid &= world.valid;
    }
    return world.matrix;
}

Matrix3 MemoryNode::GetObjTMAfterWSM(TimeValue t, Interval* valid) {
    return object_offset_ * GetNodeTM(t, valid);
}

INode* MemoryNode::GetChildNode(int i) {
    return i >= 0 && i < NumberOfChildren() ? children_[static_cast<std::size_t>(i)] : nullptr;
}

const ObjectState& MemoryNode::EvalWorldState(TimeValue t, BOOL) {
    host_.note_evaluation(t, false);
    state_ = ObjectState(timed_object_ ? timed_object_->evaluate(t) : object_.get());
    return state_;
}

int MemoryNode::IsNodeHidden(BOOL) {
    const auto has_hidden_category = [this] {
        const SClass_ID category = object_ ? object_->SuperClassID() : 0;
        return category == LIGHT_CLASS_ID || category == SHAPE_CLASS_ID ||
               category == CAMERA_CLASS_ID;
    };
    return hidden_ || (layer_ && layer_->hidden()) ||
           (host_obeys(StrictRule::kCategoriesHide) && has_hidden_category());
}

}  // namespace memhost
