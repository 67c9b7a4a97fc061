#pragma once

#include "standins/host/sdk/max.h"

namespace memhost {

/// An object that changes over time. Evaluating its node gives the object as it is at that time,
/// which dies when the node is evaluated at another time: a plug-in must not keep it.
class TimedObject {
public:
    virtual Object* evaluate(TimeValue t) = 0;

protected:
    ~TimedObject() = default;
};

}  // namespace memhost
