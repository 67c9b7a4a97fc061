#pragma once

#include "standins/host/sdk/animatable.h"

enum RefResult { REF_FAIL = 0, REF_SUCCEED = 1 };

class ReferenceTarget;
using RefTargetHandle = ReferenceTarget*;

/// The base class of everything that refers to other parts of the scene.
class ReferenceMaker : public Animatable {
public:
    virtual int NumRefs() { return 0; }
    /// Null for an empty slot.
    virtual RefTargetHandle GetReference(int) { return nullptr; }

    /// Frees an object that the host made for the caller. `delete` can't, because the destructors
    /// are protected.
    void DeleteMe() { delete this; }

protected:
    ~ReferenceMaker() override = default;
};

/// The base class of everything that other parts of the scene refer to.
class ReferenceTarget : public ReferenceMaker {
protected:
    ~ReferenceTarget() override = default;
};
