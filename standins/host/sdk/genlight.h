#pragma once

#include "standins/host/sdk/object.h"
#include "standins/host/sdk/point3.h"

/// `GenLight::Type` of a light that shines in all directions.
constexpr int OMNI_LIGHT = 0;

/// A light of the kind that has an intensity and a colour.
class GenLight : public LightObject {
public:
    virtual int Type() = 0;

    virtual float GetIntensity(TimeValue t, Interval& valid) = 0;
    /// Components from 0 to 1.
    virtual Point3 GetRGBColor(TimeValue t, Interval& valid) = 0;

    float GetIntensity(TimeValue t) {
        Interval valid(0, 0);
        return GetIntensity(t, valid);
    }
    Point3 GetRGBColor(TimeValue t) {
        Interval valid(0, 0);
        return GetRGBColor(t, valid);
    }
};
