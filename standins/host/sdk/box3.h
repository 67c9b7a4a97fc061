#pragma once

#include <algorithm>

#include "standins/host/sdk/point3.h"

/// An axis-aligned box. An empty box has `pmin` above `pmax`, so that the first point added sets
/// both.
class Box3 {
public:
    Point3 pmin;
    Point3 pmax;

    Box3() { Init(); }

    /// Makes the box empty.
    void Init() {
        pmin = Point3(1e30f, 1e30f, 1e30f);
        pmax = Point3(-1e30f, -1e30f, -1e30f);
    }

    int IsEmpty() const { return pmin.x > pmax.x || pmin.y > pmax.y || pmin.z > pmax.z; }
    Point3 Min() const { return pmin; }
    Point3 Max() const { return pmax; }

    Box3& operator+=(const Point3& p) {
        for (int axis = 0; axis < 3; ++axis) {
            pmin[axis] = std::min(pmin[axis], p[axis]);
            pmax[axis] = std::max(pmax[axis], p[axis]);
        }
        return *this;
    }

    Box3& operator+=(const Box3& other) {
        if (!other.IsEmpty()) {
            *this += other.pmin;
            *this += other.pmax;
        }
        return *this;
    }
};
