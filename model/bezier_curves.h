#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "model/light_geometry.h"

namespace qor {

/// Strands of cubic Bezier segments, such as hair. The object holds the control points of all
/// strands in order, and the number of points in each strand.
///
///     BezierCurves curves("Hair01");
///     curves.set_order(4);
///     for (const Point& point : strand) {  // 3 x segments + 1 points
///         curves.add_point(point.x, point.y, point.z);
///         curves.add_point_radius(1);
///     }
///     curves.add_curve(strand.size());
///     curves.emit(scene);
///
/// Nothing is checked: counts that don't match go into the scene unchanged.
class BezierCurves final : public LightGeometry {
public:
    explicit BezierCurves(std::string name);

    void add_point(float x, float y, float z) { points_.insert(points_.end(), {x, y, z}); }
    /// A factor on the overall radius. Give a radius to all points or to none, and likewise a
    /// colour.
    void add_point_radius(float radius) { point_radii_.push_back(radius); }
    void add_point_color(float r, float g, float b) {
        point_colors_.insert(point_colors_.end(), {r, g, b});
    }
    /// Adds a strand that consists of the next `point_count` points.
    void add_curve(int point_count) { curve_points_.push_back(point_count); }
    /// Reserves memory for that many strands and for the points of all strands, with a radius and a
    /// colour each.
    void reserve(std::size_t curves, std::size_t points);

    void set_radius(float radius) { radius_ = radius; }
    /// The number of points of a segment, 4 for cubic ones. An order below 1 isn't written.
    void set_order(int order) { order_ = order; }
    void set_fit_to_cubic(bool fit) { fit_to_cubic_ = fit; }

    /// Writes the object, with its material if it has one.
    void emit(qorSceneapi_oo& scene) override;

    /// Does nothing: curves can't be defined for later use.
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
