#include <cstddef>
#include <memory>
#include <optional>
#include <string>

#include "importers/sceneapi/dev/qorsceneapi_oo.h"
#include "model/bezier_curves.h"
#include "model/curve_material.h"
#include "model/diffuse.h"
#include "plugins/3dsmax/export/converted_object.h"
#include "plugins/3dsmax/export/hair_attributes.h"
#include "plugins/3dsmax/export/mesh_notes.h"
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

// The material's value for one percent of variation.
constexpr float kHuePerPercent = 0.001f;
constexpr float kValuePerPercent = 0.01f;

// If the root and tip colours differ, each point has its own colour. Only a curve material shows
// point colours, and it varies hue and value as well. Otherwise all strands have one colour.
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

// Adds the points of a strand, then their radii and colours. These change by the same amount from
// each control point to the next, whatever the distance.
void AddStrand(qor::BezierCurves& curves, Spline3D& spline, const StrandLook& look) {
    const auto add_point = [&curves](const Point3& point) {
        curves.add_point(point.x, point.y, point.z);
    };
    const int segments = spline.Segments();
    add_point(spline.InterpBezier3D(0, 0.0f, SPLINE_INTERP_SIMPLE));
    for (int k = 0; k < segments; ++k) {
        const bool back_to_start = spline.Closed() && k == segments - 1;
        add_point(spline.GetOutVec(k));
        add_point(spline.GetInVec(back_to_start ? 0 : k + 1));
        add_point(spline.InterpBezier3D(k, 1.0f, SPLINE_INTERP_SIMPLE));
    }

    const int count = PointCount(spline);
    curves.add_curve(count);
    const Color& root = look.root_color;
    const Color& tip = look.tip_color;
    for (int i = 0; i < count; ++i) {
        const float t = static_cast<float>(i) / static_cast<float>(count - 1);
        curves.add_point_radius(look.start_radius + t * (look.end_radius - look.start_radius));
        curves.add_point_color(root.r + t * (tip.r - root.r), root.g + t * (tip.g - root.g),
                               root.b + t * (tip.b - root.b));
    }
}

// Skips splines without segments.
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

    for (int i = 0; i < shape.SplineCount(); ++i) {
        if (shape.GetSpline(i)->Segments() > 0) {
            AddStrand(curves, *shape.GetSpline(i), look);
        }
    }
}

void NoteShortSplines(const NodeNotes& notes, BezierShape& shape) {
    const int splines = shape.SplineCount();
    int without_segments = 0;
    for (int i = 0; i < splines; ++i) {
        without_segments += shape.GetSpline(i)->Segments() > 0 ? 0 : 1;
    }
    if (without_segments > 0 || splines == 0) {
        notes.add(Note::kSplineWithoutSegments,
                  std::to_string(without_segments) + " of " + std::to_string(splines) + " splines");
    }
}

// The host gives hair no thickness, so its radius is a fraction of the hair's extent.
float HairRadius(Object& hair, TimeValue time, INode* node, ViewExp* view, float multiplier) {
    constexpr float kRadiusPerExtent = 0.0001f;
    Box3 box;
    if (view == nullptr) {
        box += Point3(0.0f, 0.0f, 0.0f);  // without a view, an object can leave the box as it is
    }
    hair.GetLocalBoundBox(time, node, view, box);
    return kRadiusPerExtent * multiplier * Length(box.pmax - box.pmin);
}

float ShapeRadius(ShapeObject& shape, TimeValue time, float multiplier) {
    Interval valid = FOREVER;
    return shape.GetThickness(time, valid) * multiplier;
}

}  // namespace

// Also true for a shape without curves, which is written as an empty object.
bool SceneExporter::ExportCurves(INode* node) {
    const TimeValue time = timing_.time;
    Object* const object = node->EvalWorldState(time, TRUE).obj;
    if (object == nullptr) {
        NoteMissingObject(node);
        return false;
    }
    ViewExp* const view = host_->GetActiveViewExp().ToPointer();
    AddToSceneBox(node, object, view);

    // The splines for hair are made again in each pass, so an update can't tell whether they have
    // changed and always includes them.
    const std::optional<StrandLook> hair = find_hair_attributes(object, time);
    if (!hair && !(options_->GeneralCurves && NodeIsWanted(node))) {
        if (notes_ != nullptr && !options_->GeneralCurves) {
            NotesOf(node).add(object->IsRenderable() ? Note::kCurvesSwitchedOff
                                                     : Note::kShapeNotRenderable);
        }
        return false;
    }
    const ConvertedObject<ShapeObject> shape(object, time, kSplineShape);
    if (shape.get() == nullptr) {
        if (notes_ != nullptr) {
            NotesOf(node).add(Note::kShapeNotConvertible, ClassText(object->ClassID()));
        }
        return false;
    }
    if (!hair && !shape->IsRenderable()) {
        NotesOf(node).add(Note::kShapeNotRenderable);
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
    if (notes_ != nullptr) {
        NoteShortSplines(NotesOf(node), splines);
    }
    const float multiplier = options_->CurveRadiusMultiplier;
    curves.set_radius(hair ? HairRadius(*object, time, node, view, multiplier)
                           : ShapeRadius(*shape.get(), time, multiplier));
    curves.set_order(kCubicOrder);
    curves.emit(*scene_);
    return true;
}
