#pragma once

#include "standins/host/sdk/plugapi.h"

class IParamBlock2;

/// The root of everything that the host's scene is made of.
class Animatable {
public:
    Animatable() = default;
    Animatable(const Animatable&) = delete;
    Animatable& operator=(const Animatable&) = delete;
    virtual ~Animatable() = default;

    virtual SClass_ID SuperClassID() = 0;
    virtual Class_ID ClassID() { return Class_ID(); }

    /// Null if there is no block of that id.
    virtual IParamBlock2* GetParamBlockByID(BlockID) { return nullptr; }
};
