#pragma once

#include "standins/host/memory/mesh_objects.h"
#include "standins/host/sdk/max.h"

namespace memhost {

/// The object of a node that has a transform but shows nothing.
class HelperObject final : public Object {
public:
    SClass_ID SuperClassID() override { return HELPER_CLASS_ID; }
    int IsRenderable() override { return FALSE; }
};

/// An object without contents, whose answers a test can set.
class PlainObject final : public Object {
public:
    explicit PlainObject(SClass_ID superclass, Class_ID class_id = Class_ID())
        : superclass_(superclass), class_id_(class_id) {}

    PlainObject& set_deformable(bool deformable) {
        deformable_ = deformable;
        return *this;
    }
    /// In world space, regardless of the node's matrix.
    PlainObject& set_world_box(const Box3& box) {
        box_ = box;
        return *this;
    }
    PlainObject& set_validity(const Interval& validity) {
        validity_ = validity;
        return *this;
    }

    SClass_ID SuperClassID() override { return superclass_; }
    Class_ID ClassID() override { return class_id_; }
    int IsRenderable() override { return superclass_ == GEOMOBJECT_CLASS_ID; }
    int IsDeformable() override { return deformable_; }
    Interval ObjectValidity(TimeValue) override { return validity_; }
    void GetWorldBoundBox(TimeValue, INode*, ViewExp*, Box3& box) override {
        answer_box(box, box_);
    }

private:
    SClass_ID superclass_;
    Class_ID class_id_;
    Box3 box_;
    Interval validity_ = FOREVER;
    bool deformable_ = false;
};

}  // namespace memhost
