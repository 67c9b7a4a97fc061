#pragma once

#include "standins/host/sdk/box3.h"
#include "standins/host/sdk/interval.h"
#include "standins/host/sdk/ref.h"

class INode;
class ViewExp;

class BaseObject : public ReferenceTarget {
public:
    /// The box in world space of the object as `node` places it. Empty if the object has no extent.
    virtual void GetWorldBoundBox(TimeValue, INode*, ViewExp*, Box3& box) { box.Init(); }
    /// The box in the object's own space. Empty if the object has no extent.
    virtual void GetLocalBoundBox(TimeValue, INode*, ViewExp*, Box3& box) { box.Init(); }

protected:
    ~BaseObject() override = default;
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

    /// Returns the object itself, or a new one that the caller frees with `DeleteMe`, or null.
    virtual Object* ConvertToType(TimeValue, Class_ID) { return nullptr; }

protected:
    ~Object() override = default;
};

/// The result of a node's pipeline.
class ObjectState {
public:
    ObjectState() = default;
    explicit ObjectState(Object* object) : obj(object) {}

    /// Owned by the host and valid until the node is evaluated again. Null if the node has no
    /// object.
    Object* obj = nullptr;
};

class GeomObject : public Object {
public:
    SClass_ID SuperClassID() override { return GEOMOBJECT_CLASS_ID; }
    int IsRenderable() override { return TRUE; }
};

/// The settings of a camera at one time.
struct CameraState {
    DWORD cbStruct = sizeof(CameraState);
    BOOL isOrtho = FALSE;
    float fov = 0;    ///< horizontal, in radians
    float tdist = 0;  ///< the distance to the target
    BOOL horzLine = FALSE;
    int manualClip = FALSE;
    float hither = 0;  ///< the near clipping plane
    float yon = 0;     ///< the far clipping plane
    float nearRange = 0;
    float farRange = 0;
};

/// Looks along the negative z axis of its node, with y up.
class CameraObject : public Object {
public:
    SClass_ID SuperClassID() override { return CAMERA_CLASS_ID; }
    int IsRenderable() override { return FALSE; }

    /// Fills `state` and narrows `valid` to the time around `t` in which it holds.
    virtual RefResult EvalCameraState(TimeValue t, Interval& valid, CameraState* state) = 0;
};

class LightObject : public Object {
public:
    SClass_ID SuperClassID() override { return LIGHT_CLASS_ID; }
    int IsRenderable() override { return FALSE; }

    virtual float GetIntensity(TimeValue t, Interval& valid) = 0;
    /// Components from 0 to 1.
    virtual Point3 GetRGBColor(TimeValue t, Interval& valid) = 0;

    float GetIntensity(TimeValue t) {
        Interval valid(0, 0);
        return GetIntensity(t, valid);
    }
    Point3 GetRGBColor(TimeValue t) {
        Interval valid(0, 0);
        return GetRGBColor(t, valid);
    }
};
