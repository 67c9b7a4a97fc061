#include "standins/host/memory/deforming_objects.h"

#include <utility>

#include "standins/host/memory/strict_rules.h"

namespace memhost {

DeformingObject::DeformingObject(DeformingMesh mesh) : over_time_(std::move(mesh)) {}

void DeformingObject::evaluate(TimeValue t) {
    if (valid_.InInterval(t)) {
        return;
    }
    const Mesh& at_rest = over_time_.at_rest(t);
    if (at_rest_ != &at_rest) {
        GetMesh() = at_rest;
        at_rest_ = &at_rest;
    }
    over_time_.deform(t, GetMesh());
    valid_ = over_time_.validity(t);
}

void DeformingObject::GetWorldBoundBox(TimeValue t, INode* node, ViewExp*, Box3& box) {
    evaluate(t);
    answer_box(box, world_box_of(GetMesh(), *node, t));
}

DeformingConvertible::DeformingConvertible(DeformingMesh mesh, Class_ID class_id)
    : over_time_(std::move(mesh)), class_id_(class_id) {}

int DeformingConvertible::CanConvertToType(Class_ID type) {
    return type == Class_ID(TRIOBJ_CLASS_ID, 0);
}

Mesh DeformingConvertible::mesh_at(TimeValue t) const {
    Mesh mesh(over_time_.at_rest(t));
    over_time_.deform(t, mesh);
    return mesh;
}

Object* DeformingConvertible::ConvertToType(TimeValue t, Class_ID type) {
    const bool converts = CanConvertToType(type) && !host_obeys(StrictRule::kConvertNull);
    return converts ? new_conversion(mesh_at(t)) : nullptr;
}

void DeformingConvertible::GetWorldBoundBox(TimeValue t, INode* node, ViewExp*, Box3& box) {
    answer_box(box, world_box_of(mesh_at(t), *node, t));
}

}  // namespace memhost
