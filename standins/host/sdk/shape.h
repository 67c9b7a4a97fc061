#pragma once

#include "standins/host/sdk/object.h"

class BezierShape;

/// An object made of curves.
class ShapeObject : public Object {
public:
    SClass_ID SuperClassID() override { return SHAPE_CLASS_ID; }
    /// Whether the curves are rendered, as threads.
    int IsRenderable() override { return FALSE; }

    virtual BOOL CanMakeBezier() { return FALSE; }
    /// Fills `shape` with the curves in the object's own space.
    virtual void MakeBezier(TimeValue, BezierShape&) {}
    /// The thickness of the threads.
    virtual float GetThickness(TimeValue t, Interval& valid) = 0;
};
