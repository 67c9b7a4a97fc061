#pragma once

#include <memory>

#include "standins/host/memory/deforming_mesh.h"
#include "standins/host/memory/timed_object.h"
#include "standins/host/sdk/max.h"

namespace memhost {

/// A mesh that changes over time.
class DeformingObject final : public GeomObject, public TimedObject {
public:
    explicit DeformingObject(DeformingMesh mesh);
    ~DeformingObject() override;

    DeformingObject& set_deformable(bool deformable) {
        deformable_ = deformable;
        return *this;
    }

    /// The mesh in its shape at `t`.
    Object* evaluate(TimeValue t) override;
    Class_ID ClassID() override { return Class_ID(TRIOBJ_CLASS_ID, 0); }

private:
    class Evaluated;

    DeformingMesh over_time_;
    std::unique_ptr<Evaluated> evaluated_;  // null before the first evaluation
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
