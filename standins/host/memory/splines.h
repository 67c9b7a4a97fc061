#pragma once

#include <string>
#include <utility>
#include <vector>

#include "standins/host/memory/custom_attributes.h"
#include "standins/host/sdk/max.h"

namespace memhost {

/// Straight from point to point.
Spline3D polyline(const std::vector<Point3>& points, bool closed = false);

/// A node's splines as they stand, with a thickness of 1 and not rendered until it is told so.
/// Knots that no segment joins have no extent.
class SplineObject : public SplineShape {
public:
    explicit SplineObject(std::vector<Spline3D> splines) {
        shape = BezierShape(std::move(splines));
    }

    SplineObject& thickness(float thickness) {
        thickness_ = thickness;
        return *this;
    }
    SplineObject& renderable(bool renderable = true) {
        renderable_ = renderable;
        return *this;
    }
    /// Adds an attribute and gives its block.
    MemoryParamBlock& attribute(const std::wstring& name) { return attributes_.add(name); }

    int IsRenderable() override { return renderable_; }
    float GetThickness(TimeValue, Interval&) override { return thickness_; }
    ICustAttribContainer* GetCustAttribContainer() override;
    void GetWorldBoundBox(TimeValue t, INode* node, ViewExp* view, Box3& box) override;
    void GetLocalBoundBox(TimeValue t, INode* node, ViewExp* view, Box3& box) override;

private:
    MemoryCustAttribs attributes_;
    float thickness_ = 1;
    bool renderable_ = false;
};

/// A shape of another class, such as a circle, which gives its splines as a new object whenever it
/// is asked for one. What it says of itself is what `splines` says.
class ConvertibleShape : public ShapeObject {
public:
    ConvertibleShape(std::vector<Spline3D> splines, Class_ID class_id)
        : splines_(std::move(splines)), class_id_(class_id) {}

    SplineObject& splines() { return splines_; }

    /// Of all the objects ever given out, those that weren't freed with `DeleteMe`.
    static int live_conversions();

    Class_ID ClassID() override { return class_id_; }
    int IsRenderable() override { return splines_.IsRenderable(); }
    float GetThickness(TimeValue t, Interval& valid) override {
        return splines_.GetThickness(t, valid);
    }
    ICustAttribContainer* GetCustAttribContainer() override {
        return splines_.GetCustAttribContainer();
    }
    int CanConvertToType(Class_ID type) override { return splines_.CanConvertToType(type); }
    Object* ConvertToType(TimeValue t, Class_ID type) override;
    void GetWorldBoundBox(TimeValue t, INode* node, ViewExp* view, Box3& box) override {
        splines_.GetWorldBoundBox(t, node, view, box);
    }
    void GetLocalBoundBox(TimeValue t, INode* node, ViewExp* view, Box3& box) override {
        splines_.GetLocalBoundBox(t, node, view, box);
    }

private:
    SplineObject splines_;
    Class_ID class_id_;
};

}  // namespace memhost
