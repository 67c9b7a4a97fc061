#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "model/light_geometry.h"

namespace qor {

/// Strands of cubic Bezier segments, such as hair: the control points of all strands one after the
/// other, and how many of them each strand has.
///
///     BezierCurves curves("Hair01");
///     curves.set_order(4);
///     for (const Point& point : strand) {  // 3 x segments + 1 of them
///         curves.add_point(point.x, point.y, point.z);
///         curves.add_point_radius(1);
///     }
///     curves.add_curve(strand.size());
///     curves.emit(scene);
///
/// Nothing is checked: what doesn't fit together goes into the scene as it stands.
class BezierCurves final : public LightGeometry {
public:
    explicit BezierCurves(std::string name);

    void add_point(float x, float y, float z) { points_.insert(points_.end(), {x, y, z}); }
    /// A factor on the overall radius. Radii and colours are for all points or for none.
    void add_point_radius(float radius) { point_radii_.push_back(radius); }
    void add_point_color(float r, float g, float b) {
        point_colors_.insert(point_colors_.end(), {r, g, b});
    }
    /// Says how many of the points belong to the next strand.
    void add_curve(int point_count) { curve_points_.push_back(point_count); }
    /// Room for strands and for the points of all of them, with a radius and a colour each.
    void reserve(std::size_t curves, std::size_t points);

    void set_radius(float radius) { radius_ = radius; }
    /// The points that make a segment, 4 for cubic ones. The scene isn't told of one below 1.
    void set_order(int order) { order_ = order; }
    void set_fit_to_cubic(bool fit) { fit_to_cubic_ = fit; }

    /// Writes the object with its material, if it has one.
    void emit(qorSceneapi_oo& scene) override;

    /// Curves are only ever written in place, so there is nothing to define.
    void define(qorSceneapi_oo&) override {}

    std::size_t data_size() const override;

private:
    int order_ = -1;
    float radius_ = 1.0f;
    bool fit_to_cubic_ = false;
    std::vector<float> points_;        // three per point
    std::vector<float> point_radii_;   // one per point
    std::vector<int> curve_points_;    // one per strand
    std::vector<float> point_colors_;  // three per point
};

}  // namespace qor
