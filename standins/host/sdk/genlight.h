#pragma once

#include "standins/host/sdk/object.h"

/// `GenLight::Type` of a light that shines in all directions.
constexpr int OMNI_LIGHT = 0;

/// A light that tells which kind it is.
class GenLight : public LightObject {
public:
    virtual int Type() = 0;
};
