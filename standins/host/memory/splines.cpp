#include "standins/host/memory/splines.h"

#include <atomic>

#include "standins/host/memory/guarded_memory.h"
#include "standins/host/memory/mesh_objects.h"
#include "standins/host/memory/strict_rules.h"

namespace memhost {
namespace {

std::atomic<int> live_conversion_count{0};

class Conversion final : public SplineObject, public GuardedMemory {
public:
    Conversion(SplineObject& source, TimeValue t) : SplineObject({}) {
        source.MakeBezier(t, shape);
        thickness([&source](TimeValue at) {
            Interval valid = FOREVER;
            return source.GetThickness(at, valid);
        });
        renderable(source.IsRenderable() != 0);
        ++live_conversion_count;
    }
    ~Conversion() override { --live_conversion_count; }
};

// The box of the control points of all segments. The curves never leave it.
Box3 box_of(BezierShape& shape, const Matrix3& to) {
    Box3 box;
    for (int i = 0; i < shape.SplineCount(); ++i) {
        const Spline3D& spline = *shape.GetSpline(i);
        for (int k = 0; k < spline.Segments(); ++k) {
            if (k == 0) {
                box += spline.InterpBezier3D(0, 0) * to;
            }
            box += spline.GetOutVec(k) * to;
            box += spline.GetInVec((k + 1) % spline.KnotCount()) * to;
            box += spline.InterpBezier3D(k, 1) * to;
        }
    }
    return box;
}

}  // namespace

Spline3D polyline(const std::vector<Point3>& points, bool closed) {
    std::vector<Spline3D::Knot> knots;
    for (const Point3& point : points) {
        knots.push_back({point, point, point});
    }
    const std::size_t segments = closed || knots.empty() ? knots.size() : knots.size() - 1;
    for (std::size_t i = 0; i < segments; ++i) {
        Spline3D::Knot& start = knots[i];
        Spline3D::Knot& end = knots[(i + 1) % knots.size()];
        const Point3 third = (end.point - start.point) / 3.0f;
        start.out = start.point + third;
        end.in = end.point - third;
    }
    return Spline3D(std::move(knots), closed);
}

ICustAttribContainer* SplineObject::GetCustAttribContainer() {
    return attributes_.GetNumCustAttribs() == 0 ? nullptr : &attributes_;
}

void SplineObject::MakeBezier(TimeValue t, BezierShape& made) {
    made = splines_ ? BezierShape(splines_(t)) : shape;
}

// The object at one time.
class SplineObject::Evaluated final : public SplineShape, public GuardedMemory {
public:
    Evaluated(SplineObject& source, TimeValue t) : source_(source), time_(t) {
        source.MakeBezier(t, shape);
    }

    TimeValue time() const { return time_; }

    int IsRenderable() override { return source_.IsRenderable(); }
    float GetThickness(TimeValue t, Interval& valid) override {
        return source_.GetThickness(t, valid);
    }
    void MakeBezier(TimeValue t, BezierShape& made) override { source_.MakeBezier(t, made); }
    ICustAttribContainer* GetCustAttribContainer() override {
        return source_.GetCustAttribContainer();
    }
    void GetWorldBoundBox(TimeValue t, INode* node, ViewExp*, Box3& box) override {
        answer_box(box, box_of(shape, node->GetObjTMAfterWSM(t)));
    }
    void GetLocalBoundBox(TimeValue, INode*, ViewExp*, Box3& box) override {
        answer_box(box, box_of(shape, Matrix3()));
    }
    Object* ConvertToType(TimeValue t, Class_ID type) override {
        return source_.converted(*this, t, type);
    }

private:
    SplineObject& source_;
    TimeValue time_;
};

Object* SplineObject::evaluate(TimeValue t) {
    if (!splines_) {
        return this;
    }
    if (!evaluated_ || evaluated_->time() != t) {
        evaluated_ = std::shared_ptr<Evaluated>(new Evaluated(*this, t));
    }
    return evaluated_.get();
}

void SplineObject::GetWorldBoundBox(TimeValue t, INode* node, ViewExp*, Box3& box) {
    answer_box(box, box_of(shape, node->GetObjTMAfterWSM(t)));
}

void SplineObject::GetLocalBoundBox(TimeValue, INode*, ViewExp*, Box3& box) {
    answer_box(box, box_of(shape, Matrix3()));
}

Object* SplineObject::ConvertToType(TimeValue t, Class_ID type) {
    return converted(*this, t, type);
}

Object* SplineObject::converted(SplineShape& from, TimeValue t, Class_ID type) {
    if (!CanConvertToType(type) || host_obeys(StrictRule::kConvertNull)) {
        return nullptr;
    }
    return host_obeys(StrictRule::kConvertNewObject) ? new Conversion(*this, t) : &from;
}

int ConvertibleShape::live_conversions() {
    return live_conversion_count;
}

Object* ConvertibleShape::ConvertToType(TimeValue t, Class_ID type) {
    const bool converts = CanConvertToType(type) && !host_obeys(StrictRule::kConvertNull);
    return converts ? new Conversion(splines_, t) : nullptr;
}

}  // namespace memhost
