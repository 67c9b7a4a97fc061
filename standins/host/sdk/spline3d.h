#pragma once

#include <utility>
#include <vector>

#include "standins/host/sdk/point3.h"

constexpr int SPLINE_INTERP_SIMPLE = 0;

/// A chain of cubic Bezier segments.
class Spline3D {
public:
    /// A point of the curve and its two Bezier handles. The handles are positions, not offsets.
    struct Knot {
        Point3 in;
        Point3 point;
        Point3 out;
    };

    Spline3D(std::vector<Knot> knots, bool closed) : knots_(std::move(knots)), closed_(closed) {}

    int KnotCount() const { return static_cast<int>(knots_.size()); }
    int Closed() const { return closed_; }
    /// A closed spline has a segment from its last knot to the first.
    int Segments() const { return closed_ || knots_.empty() ? KnotCount() : KnotCount() - 1; }

    Point3 GetInVec(int i) const { return knot(i).in; }
    Point3 GetOutVec(int i) const { return knot(i).out; }

    /// The point of a segment at `t`, from 0 at its start to 1 at its end.
    Point3 InterpBezier3D(int segment, float t, int = SPLINE_INTERP_SIMPLE) const {
        const Knot& start = knot(segment);
        const Knot& end = knot(segment + 1 < KnotCount() ? segment + 1 : 0);
        const float s = 1.0f - t;
        return start.point * (s * s * s) + start.out * (3.0f * s * s * t) +
               end.in * (3.0f * s * t * t) + end.point * (t * t * t);
    }

private:
    const Knot& knot(int i) const { return knots_[static_cast<std::size_t>(i)]; }

    std::vector<Knot> knots_;
    bool closed_;
};
