#include "standins/host/memory/deforming_objects.h"

#include <utility>

#include "standins/host/memory/guarded_memory.h"
#include "standins/host/memory/mesh_objects.h"
#include "standins/host/memory/strict_rules.h"

namespace memhost {

// The object at one time. Its mesh comes from the object that it replaces, so that nothing is
// copied that only moves.
class DeformingObject::Evaluated final : public TriObject, public GuardedMemory {
public:
    Evaluated(DeformingObject& source, TimeValue t, Evaluated* before)
        : source_(source), time_(t), valid_(source.over_time_.validity(t)) {
        if (before != nullptr) {
            GetMesh().swap(before->GetMesh());
            at_rest_ = before->at_rest_;
        }
        const Mesh& at_rest = source.over_time_.at_rest(t);
        if (at_rest_ != &at_rest) {
            GetMesh() = at_rest;
            at_rest_ = &at_rest;
        }
        if (before == nullptr || !before->valid_.InInterval(t)) {
            source.over_time_.deform(t, GetMesh());
        }
    }

    TimeValue time() const { return time_; }

    int IsDeformable() override { return source_.deformable_; }
    Interval ObjectValidity(TimeValue t) override { return source_.over_time_.validity(t); }
    void GetWorldBoundBox(TimeValue t, INode* node, ViewExp*, Box3& box) override {
        answer_box(box, world_box_of(GetMesh(), *node, t));
    }
    Object* ConvertToType(TimeValue, Class_ID type) override {
        return converted_to_own_class(*this, type);
    }

private:
    DeformingObject& source_;
    TimeValue time_;
    Interval valid_;
    const Mesh* at_rest_ = nullptr;  // the mesh is a deformed copy of this one
};

DeformingObject::DeformingObject(DeformingMesh mesh) : over_time_(std::move(mesh)) {}
DeformingObject::~DeformingObject() = default;

Object* DeformingObject::evaluate(TimeValue t) {
    if (!evaluated_ || evaluated_->time() != t) {
        evaluated_ = std::make_unique<Evaluated>(*this, t, evaluated_.get());
    }
    return evaluated_.get();
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
