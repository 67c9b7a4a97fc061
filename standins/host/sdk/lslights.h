#pragma once

#include "standins/host/sdk/genlight.h"

constexpr Class_ID LIGHTSCAPE_LIGHT_CLASS(0x30331006, 0x2454bd3);

/// A photometric light: it has a shape, an output in lumens and a colour temperature.
class LightscapeLight : public GenLight {
public:
    /// Values of `Type`. Lights with and without a target have different types.
    enum LightTypes {
        TARGET_POINT_TYPE = 0x214,
        POINT_TYPE,
        TARGET_LINEAR_TYPE,
        LINEAR_TYPE,
        TARGET_AREA_TYPE,
        AREA_TYPE,
        TARGET_DISC_TYPE,
        DISC_TYPE,
        TARGET_SPHERE_TYPE,
        SPHERE_TYPE,
        TARGET_CYLINDER_TYPE,
        CYLINDER_TYPE,
    };

    enum DistTypes { ISOTROPIC_DIST = 0, SPOTLIGHT_DIST, DIFFUSE_DIST, WEB_DIST };

    /// Ids of parameter blocks.
    enum ParameterBlockID { PB_GENERAL = 0, PB_SHADOW, PB_SPOT, PB_WEB, PB_EXT };

    BOOL IsSubClassOf(Class_ID id) override {
        return id == LIGHTSCAPE_LIGHT_CLASS || GenLight::IsSubClassOf(id);
    }

    virtual DistTypes GetDistribution() const = 0;

    /// Copies up to `size` points of the shape, in the light's own space, to `points`. Returns the
    /// number of points in the shape, whatever `size` is.
    virtual int GetShape(Point3* points, int size) const = 0;

    virtual float GetRadius(TimeValue t, Interval& valid) const = 0;
    virtual float GetKelvin(TimeValue t, Interval& valid) const = 0;
    /// In lumens, after dimming.
    virtual float GetResultingFlux(TimeValue t, Interval& valid) const = 0;
    /// The colour of the filter in front of the light; white for none.
    virtual Point3 GetRGBFilter(TimeValue t, Interval& valid) const = 0;

    float GetRadius(TimeValue t) const {
        Interval valid(0, 0);
        return GetRadius(t, valid);
    }
    float GetKelvin(TimeValue t) const {
        Interval valid(0, 0);
        return GetKelvin(t, valid);
    }
    float GetResultingFlux(TimeValue t) const {
        Interval valid(0, 0);
        return GetResultingFlux(t, valid);
    }
    Point3 GetRGBFilter(TimeValue t) const {
        Interval valid(0, 0);
        return GetRGBFilter(t, valid);
    }
};
