#pragma once

#include "standins/host/sdk/maxtypes.h"

namespace memhost {

/// An object that holds its state at one time. Evaluating its node moves it to another time.
class TimedObject {
public:
    virtual void evaluate(TimeValue t) = 0;

protected:
    ~TimedObject() = default;
};

}  // namespace memhost
