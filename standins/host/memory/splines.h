#pragma once

#include <string>
#include <utility>
#include <vector>

#include "standins/host/memory/custom_attributes.h"
#include "standins/host/sdk/max.h"

namespace memhost {

/// A spline that is straight from point to point.
Spline3D polyline(const std::vector<Point3>& points, bool closed = false);

/// An object that consists of splines. It has a thickness of 1 and isn't rendered until
/// `renderable` is called. Its boxes ignore knots that no segment joins.
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
    /// Adds an attribute and returns its block.
    MemoryParamBlock& attribute(const std::wstring& name) { return attributes_.add(name); }

    int IsRenderable() override { return renderable_; }
    Object* ConvertToType(TimeValue t, Class_ID type) override;
    float GetThickness(TimeValue, Interval&) override { return thickness_; }
    ICustAttribContainer* GetCustAttribContainer() override;
    void GetWorldBoundBox(TimeValue t, INode* node, ViewExp* view, Box3& box) override;
    void GetLocalBoundBox(TimeValue t, INode* node, ViewExp* view, Box3& box) override;

private:
    MemoryCustAttribs attributes_;
    float thickness_ = 1;
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
