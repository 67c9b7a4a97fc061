#pragma once

#include <utility>
#include <vector>

#include "standins/host/sdk/shape.h"
#include "standins/host/sdk/spline3d.h"

/// A list of splines.
class BezierShape {
public:
    BezierShape() = default;
    explicit BezierShape(std::vector<Spline3D> splines) : splines_(std::move(splines)) {}
    BezierShape(BezierShape&) = default;
    BezierShape& operator=(const BezierShape&) = default;

    int SplineCount() const { return static_cast<int>(splines_.size()); }
    /// The shape owns the spline.
    Spline3D* GetSpline(int i) { return &splines_[static_cast<std::size_t>(i)]; }

private:
    std::vector<Spline3D> splines_;
};

/// A shape that is stored as Bezier splines.
class SplineShape : public ShapeObject {
public:
    BezierShape shape;

    Class_ID ClassID() override { return Class_ID(SPLINESHAPE_CLASS_ID, 0); }
    int CanConvertToType(Class_ID type) override { return type == ClassID(); }
    Object* ConvertToType(TimeValue, Class_ID type) override {
        return CanConvertToType(type) ? this : nullptr;
    }
    BOOL CanMakeBezier() override { return TRUE; }
    void MakeBezier(TimeValue, BezierShape& made) override { made = shape; }
};
