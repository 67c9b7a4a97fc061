#include "model/bezier_curves.h"

#include <utility>

#include "importers/sceneapi/dev/qorscene_api.h"
#include "importers/sceneapi/dev/qorsceneapi_oo.h"
#include "model/material.h"

namespace qor {

BezierCurves::BezierCurves(std::string name) : LightGeometry(std::move(name)) {}

void BezierCurves::reserve(std::size_t curves, std::size_t points) {
    points_.reserve(3 * points);
    point_radii_.reserve(points);
    curve_points_.reserve(curves);
    point_colors_.reserve(3 * points);
}

void BezierCurves::emit(qorSceneapi_oo& scene) {
    qorScene_api& api = *scene.get_api();
    api.begin_object(get_name().c_str(), true);

    api.begin_geometry("qor_curves");
    scene.set_parameter("radius", radius_);
    if (order_ > 0) {
        scene.set_parameter("order", order_);
    }
    scene.set_parameter("fitToCubic", fit_to_cubic_);
    scene.set_vec3_array("p", points_);
    scene.set_array("nvertices", curve_points_);
    if (!point_radii_.empty()) {
        scene.set_array("pr", point_radii_);
    }
    if (!point_colors_.empty()) {
        scene.set_vec3_array("pcol", point_colors_);
    }
    api.end_geometry();

    if (const std::shared_ptr<Material> material = get_material()) {
        material->emit(scene);
    }
    api.end_object();
}

std::size_t BezierCurves::data_size() const {
    constexpr std::size_t kBytesPerNumber = 4;
    return kBytesPerNumber *
           (points_.size() + point_radii_.size() + curve_points_.size() + point_colors_.size());
}

}  // namespace qor
