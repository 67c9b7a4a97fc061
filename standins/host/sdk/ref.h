#pragma once

#include "standins/host/sdk/animatable.h"

enum RefResult { REF_FAIL = 0, REF_SUCCEED = 1 };

class ReferenceTarget;
using RefTargetHandle = ReferenceTarget*;

/// Whatever refers to other parts of the scene.
class ReferenceMaker : public Animatable {
public:
    virtual int NumRefs() { return 0; }
    /// Null for a place that is empty.
    virtual RefTargetHandle GetReference(int) { return nullptr; }

    /// Frees an object that the host made for the caller. Nothing else does: the destructors are
    /// the host's.
    void DeleteMe() { delete this; }

protected:
    ~ReferenceMaker() override = default;
};

/// Whatever other parts of the scene refer to.
class ReferenceTarget : public ReferenceMaker {
protected:
    ~ReferenceTarget() override = default;
};
