#pragma once

#include <memory>

#include "standins/host/sdk/max.h"

namespace memhost {

/// The box of a node's mesh in world space.
Box3 world_box_of(const Mesh& mesh, INode& node, TimeValue t);

/// Sets the box that an object was asked for, if the host's rules let it.
void answer_box(Box3& box, const Box3& answer);

/// `object`, which is of the class `type`, as its own class: usually the object itself.
Object* converted_to_own_class(TriObject& object, Class_ID type);

/// A new triangle object with a copy of `mesh`. The caller frees it with `DeleteMe`;
/// `ConvertibleObject::live_conversions` counts it until then.
TriObject* new_conversion(const Mesh& mesh);

/// A mesh that doesn't change over time.
class MeshObject final : public TriObject {
public:
    MeshObject() = default;
    explicit MeshObject(const Mesh& mesh) { GetMesh() = mesh; }

    MeshObject& set_deformable(bool deformable) {
        deformable_ = deformable;
        return *this;
    }
    MeshObject& set_validity(const Interval& validity) {
        validity_ = validity;
        return *this;
    }

    int IsDeformable() override { return deformable_; }
    Interval ObjectValidity(TimeValue) override { return validity_; }
    Object* ConvertToType(TimeValue, Class_ID type) override {
        return converted_to_own_class(*this, type);
    }
    void GetWorldBoundBox(TimeValue t, INode* node, ViewExp* view, Box3& box) override;

private:
    Interval validity_ = FOREVER;
    bool deformable_ = true;
};

/// Geometry of another class, such as a primitive or a bone. Each conversion makes a new object
/// with the mesh.
class ConvertibleObject final : public GeomObject {
public:
    ConvertibleObject(const Mesh& mesh, Class_ID class_id) : mesh_(mesh), class_id_(class_id) {}

    ConvertibleObject& set_deformable(bool deformable) {
        deformable_ = deformable;
        return *this;
    }
    ConvertibleObject& set_validity(const Interval& validity) {
        validity_ = validity;
        return *this;
    }

    /// The number of converted objects that haven't been freed with `DeleteMe` yet.
    static int live_conversions();

    Class_ID ClassID() override { return class_id_; }
    int IsDeformable() override { return deformable_; }
    Interval ObjectValidity(TimeValue) override { return validity_; }
    int CanConvertToType(Class_ID type) override;
    Object* ConvertToType(TimeValue t, Class_ID type) override;
    void GetWorldBoundBox(TimeValue t, INode* node, ViewExp* view, Box3& box) override;

private:
    Mesh mesh_;
    Class_ID class_id_;
    Interval validity_ = FOREVER;
    bool deformable_ = true;
};

}  // namespace memhost
