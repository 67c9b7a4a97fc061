#pragma once

#include "standins/host/sdk/object.h"

/// `GenLight::Type` of a light that shines in all directions.
constexpr int OMNI_LIGHT = 0;

/// A light that reports its kind.
class GenLight : public LightObject {
public:
    virtual int Type() = 0;
};
