#pragma once

#include "standins/host/sdk/animatable.h"

enum RefResult { REF_FAIL = 0, REF_SUCCEED = 1 };

/// Whatever refers to other parts of the scene.
class ReferenceMaker : public Animatable {
public:
    /// Frees an object that the host made for the caller.
    virtual RefResult DeleteMe() {
        delete this;
        return REF_SUCCEED;
    }
};

/// Whatever other parts of the scene refer to.
class ReferenceTarget : public ReferenceMaker {};
