#pragma once

#include "standins/host/sdk/box3.h"
#include "standins/host/sdk/interval.h"
#include "standins/host/sdk/ref.h"

class INode;
class ViewExp;

class BaseObject : public ReferenceTarget {
public:
    /// The box in world space of the object as `node` places it; empty if it has no extent.
    virtual void GetWorldBoundBox(TimeValue, INode*, ViewExp*, Box3& box) { box.Init(); }
};

/// What a node puts into the scene.
class Object : public BaseObject {
public:
    virtual int IsRenderable() = 0;

    /// Non-zero if the object has points that modifiers can move.
    virtual int IsDeformable() { return FALSE; }

    /// The interval around `t` in which the object stays as it is at `t`.
    virtual Interval ObjectValidity(TimeValue) { return FOREVER; }

    virtual int CanConvertToType(Class_ID) { return FALSE; }

    /// The object itself, or a new one that the caller frees with `DeleteMe`, or null.
    virtual Object* ConvertToType(TimeValue, Class_ID) { return nullptr; }
};

/// The result of a node's pipeline.
class ObjectState {
public:
    ObjectState() = default;
    explicit ObjectState(Object* object) : obj(object) {}

    /// Owned by the host and valid until the node is evaluated again. Null if the node has none.
    Object* obj = nullptr;
};

class GeomObject : public Object {
public:
    SClass_ID SuperClassID() override { return GEOMOBJECT_CLASS_ID; }
    int IsRenderable() override { return TRUE; }
};

class CameraObject : public Object {
public:
    SClass_ID SuperClassID() override { return CAMERA_CLASS_ID; }
    int IsRenderable() override { return FALSE; }
};

class LightObject : public Object {
public:
    SClass_ID SuperClassID() override { return LIGHT_CLASS_ID; }
    int IsRenderable() override { return FALSE; }
};

class ShapeObject : public Object {
public:
    SClass_ID SuperClassID() override { return SHAPE_CLASS_ID; }
    int IsRenderable() override { return FALSE; }
};
