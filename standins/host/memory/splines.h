#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "standins/host/memory/custom_attributes.h"
#include "standins/host/memory/timed_object.h"
#include "standins/host/memory/timed_value.h"
#include "standins/host/sdk/max.h"

namespace memhost {

/// A spline that is straight from point to point.
Spline3D polyline(const std::vector<Point3>& points, bool closed = false);

/// An object that consists of splines. It has a thickness of 1 and isn't rendered until
/// `renderable` is called. Its boxes ignore knots that no segment joins.
class SplineObject : public SplineShape, public TimedObject {
public:
    explicit SplineObject(std::vector<Spline3D> splines) {
        shape = BezierShape(std::move(splines));
    }

    /// Splines that change over time.
    SplineObject& grows(std::function<std::vector<Spline3D>(TimeValue)> splines) {
        splines_ = std::move(splines);
        return *this;
    }
    SplineObject& thickness(TimedNumber thickness) {
        thickness_ = std::move(thickness);
        return *this;
    }
    SplineObject& renderable(bool renderable = true) {
        renderable_ = renderable;
        return *this;
    }
    /// Adds an attribute and returns its block.
    MemoryParamBlock& attribute(const std::wstring& name) { return attributes_.add(name); }

    int IsRenderable() override { return renderable_; }
    Object* ConvertToType(TimeValue t, Class_ID type) override;
    float GetThickness(TimeValue t, Interval& valid) override { return thickness_.at(t, valid); }
    void MakeBezier(TimeValue t, BezierShape& made) override;
    /// The object with its splines at `t`; this one if they don't change.
    Object* evaluate(TimeValue t) override;
    ICustAttribContainer* GetCustAttribContainer() override;
    void GetWorldBoundBox(TimeValue t, INode* node, ViewExp* view, Box3& box) override;
    void GetLocalBoundBox(TimeValue t, INode* node, ViewExp* view, Box3& box) override;

private:
    class Evaluated;

    // `from` is this object or its splines at one time.
    Object* converted(SplineShape& from, TimeValue t, Class_ID type);

    MemoryCustAttribs attributes_;

    std::function<std::vector<Spline3D>(TimeValue)> splines_;  // empty if they don't change
    std::shared_ptr<Evaluated> evaluated_;
    TimedNumber thickness_ = 1.0f;
    bool renderable_ = false;
};

/// A shape of another class, such as a circle. Each conversion makes a new object with its splines.
/// Everything else is as in `splines`.
class ConvertibleShape : public ShapeObject {
public:
    ConvertibleShape(std::vector<Spline3D> splines, Class_ID class_id)
        : splines_(std::move(splines)), class_id_(class_id) {}

    SplineObject& splines() { return splines_; }

    /// The number of converted objects that haven't been freed with `DeleteMe` yet.
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
