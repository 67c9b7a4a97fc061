#pragma once

#include "standins/host/sdk/maxtypes.h"

namespace memhost {

/// An object that shows what it is at one time, and that a node brings there as it is evaluated.
class TimedObject {
public:
    virtual void evaluate(TimeValue t) = 0;

protected:
    ~TimedObject() = default;
};

}  // namespace memhost
