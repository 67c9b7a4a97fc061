#pragma once

#include "standins/host/memory/deforming_mesh.h"
#include "standins/host/memory/mesh_objects.h"
#include "standins/host/memory/timed_object.h"
#include "standins/host/sdk/max.h"

namespace memhost {

/// A mesh that changes over time, in its shape at the node's last evaluation.
class DeformingObject final : public TriObject, public TimedObject {
public:
    explicit DeformingObject(DeformingMesh mesh);

    DeformingObject& set_deformable(bool deformable) {
        deformable_ = deformable;
        return *this;
    }

    void evaluate(TimeValue t) override;

    int IsDeformable() override { return deformable_; }
    Interval ObjectValidity(TimeValue t) override { return over_time_.validity(t); }
    Object* ConvertToType(TimeValue, Class_ID type) override {
        return converted_to_own_class(*this, type);
    }
    void GetWorldBoundBox(TimeValue t, INode* node, ViewExp* view, Box3& box) override;

private:
    DeformingMesh over_time_;
    const Mesh* at_rest_ = nullptr;  // the mesh is a deformed copy of this one
    Interval valid_;                 // the times for which the mesh is up to date
    bool deformable_ = true;
};

/// Geometry of another class whose mesh changes over time. Each conversion makes a new object with
/// the mesh at that time, which `ConvertibleObject::live_conversions` counts.
class DeformingConvertible final : public GeomObject {
public:
    DeformingConvertible(DeformingMesh mesh, Class_ID class_id);

    DeformingConvertible& set_deformable(bool deformable) {
        deformable_ = deformable;
        return *this;
    }

    Class_ID ClassID() override { return class_id_; }
    int IsDeformable() override { return deformable_; }
    Interval ObjectValidity(TimeValue t) override { return over_time_.validity(t); }
    int CanConvertToType(Class_ID type) override;
    Object* ConvertToType(TimeValue t, Class_ID type) override;
    void GetWorldBoundBox(TimeValue t, INode* node, ViewExp* view, Box3& box) override;

private:
    Mesh mesh_at(TimeValue t) const;

    DeformingMesh over_time_;
    Class_ID class_id_;
    bool deformable_ = true;
};

}  // namespace memhost
