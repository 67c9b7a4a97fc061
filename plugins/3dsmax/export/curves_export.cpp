#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "importers/sceneapi/dev/qorsceneapi_oo.h"
#include "model/bezier_curves.h"
#include "model/curve_material.h"
#include "model/diffuse.h"
#include "plugins/3dsmax/export/converted_object.h"
#include "plugins/3dsmax/export/hair_attributes.h"
#include "plugins/3dsmax/export/narrow_name.h"
#include "plugins/3dsmax/export/scene_exporter.h"

namespace {

const Class_ID kSplineShape(SPLINESHAPE_CLASS_ID, 0);

constexpr int kCubicOrder = 4;

int PointCount(const Spline3D& spline) {
    return spline.Segments() * 3 + 1;
}

bool Differ(const Color& a, const Color& b) {
    return a.r != b.r || a.g != b.g || a.b != b.b;
}

// What the material takes for one percent.
constexpr float kHuePerPercent = 0.001f;
constexpr float kValuePerPercent = 0.01f;

// Where root and tip differ, strands are coloured by their points, which only a material for curves
// shows; it varies them as well. Others have one colour all over.
std::shared_ptr<qor::Material> MaterialOf(const StrandLook& look) {
    if (Differ(look.tip_color, look.root_color)) {
        auto material = std::make_shared<qor::CurveMaterial>("curve");
        material->set_use_vertex_color(true);
        material->set_hue(kHuePerPercent * look.hue);
        material->set_value(kValuePerPercent * look.value);
        return material;
    }
    auto material = std::make_shared<qor::Diffuse>("curve");
    material->set_color(look.tip_color.r, look.tip_color.g, look.tip_color.b);
    return material;
}

// One strand on its way from the host into the object, whose storage serves for all of them.
class StrandRecord {
public:
    explicit StrandRecord(const StrandLook& look) : look_(look) {}

    void Gather(Spline3D& spline) {
        GatherPoints(spline);
        // Strands of one length, as hair has them, look alike point by point.
        if (count_ != PointCount(spline)) {
            count_ = PointCount(spline);
            GatherLook();
        }
    }

    void AddTo(qor::BezierCurves& curves) const {
        curves.add_points(points_);
        curves.add_curve(count_);
        curves.add_point_radii(radii_);
        curves.add_point_colors(colors_);
    }

private:
    void GatherPoints(Spline3D& spline) {
        points_.resize(3 * static_cast<std::size_t>(PointCount(spline)));
        float* next = points_.data();
        const auto add = [&next](const Point3& point) {
            *next++ = point.x;
            *next++ = point.y;
            *next++ = point.z;
        };

        const int segments = spline.Segments();
        add(spline.InterpBezier3D(0, 0.0f, SPLINE_INTERP_SIMPLE));
        for (int k = 0; k < segments; ++k) {
            const bool back_to_start = spline.Closed() && k == segments - 1;
            add(spline.GetOutVec(k));
            add(spline.GetInVec(back_to_start ? 0 : k + 1));
            add(spline.InterpBezier3D(k, 1.0f, SPLINE_INTERP_SIMPLE));
        }
    }

    // Evenly from control point to control point, however far they lie apart.
    void GatherLook() {
        const Color& root = look_.root_color;
        const Color& tip = look_.tip_color;
        radii_.clear();
        colors_.clear();
        for (int i = 0; i < count_; ++i) {
            const float t = static_cast<float>(i) / static_cast<float>(count_ - 1);
            radii_.push_back(look_.start_radius + t * (look_.end_radius - look_.start_radius));
            colors_.insert(colors_.end(),
                           {root.r + t * (tip.r - root.r), root.g + t * (tip.g - root.g),
                            root.b + t * (tip.b - root.b)});
        }
    }

    const StrandLook& look_;
    int count_ = 0;
    std::vector<float> points_;  // three per point, as are the colours
    std::vector<float> radii_;
    std::vector<float> colors_;
};

// A spline without segments is no curve, and stays out.
void AddCurves(qor::BezierCurves& curves, BezierShape& shape, const StrandLook& look) {
    std::size_t curve_count = 0;
    std::size_t point_count = 0;
    for (int i = 0; i < shape.SplineCount(); ++i) {
        if (shape.GetSpline(i)->Segments() > 0) {
            ++curve_count;
            point_count += static_cast<std::size_t>(PointCount(*shape.GetSpline(i)));
        }
    }
    curves.reserve(curve_count, point_count);

    StrandRecord record(look);
    for (int i = 0; i < shape.SplineCount(); ++i) {
        Spline3D& spline = *shape.GetSpline(i);
        if (spline.Segments() > 0) {
            record.Gather(spline);
            record.AddTo(curves);
        }
    }
}

// Hair has no thickness of its own in the host, but one in proportion to its extent.
float HairRadius(Object& hair, TimeValue time, INode* node, ViewExp* view, float multiplier) {
    constexpr float kRadiusPerExtent = 0.0001f;
    Box3 box;
    hair.GetLocalBoundBox(time, node, view, box);
    return kRadiusPerExtent * multiplier * Length(box.pmax - box.pmin);
}

float ShapeRadius(ShapeObject& shape, TimeValue time, float multiplier) {
    Interval valid = FOREVER;
    return shape.GetThickness(time, valid) * multiplier;
}

}  // namespace

// True also for a shape without curves, which is written empty.
bool SceneExporter::ExportCurves(INode* node) {
    const TimeValue time = timing_.time;
    Object* const object = node->EvalWorldState(time, TRUE).obj;
    if (object == nullptr) {
        return false;
    }
    ViewExp* const view = host_->GetActiveViewExp().ToPointer();
    AddToSceneBox(node, object, view);

    // The splines that stand for hair are made anew for each pass, so an update can't tell whether
    // they have changed and always takes them along.
    const std::optional<StrandLook> hair = find_hair_attributes(object, time);
    if (!hair && !(options_->GeneralCurves && NodeIsWanted(node))) {
        return false;
    }
    const ConvertedObject<ShapeObject> shape(object, time, kSplineShape);
    if (shape.get() == nullptr || (!hair && !shape->IsRenderable())) {
        return false;
    }
    BezierShape splines;
    if (shape->CanMakeBezier()) {
        shape->MakeBezier(time, splines);
    }

    qor::BezierCurves curves(NarrowName(node->GetName()));
    const StrandLook look = hair.value_or(StrandLook());
    curves.set_material(MaterialOf(look));
    AddCurves(curves, splines, look);
    const float multiplier = options_->CurveRadiusMultiplier;
    curves.set_radius(hair ? HairRadius(*object, time, node, view, multiplier)
                           : ShapeRadius(*shape.get(), time, multiplier));
    curves.set_order(kCubicOrder);
    curves.emit(*scene_);
    return true;
}
