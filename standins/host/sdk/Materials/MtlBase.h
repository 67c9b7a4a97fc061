#pragma once

#include "standins/host/sdk/Materials/ISubMap.h"
#include "standins/host/sdk/interval.h"
#include "standins/host/sdk/ref.h"

/// What materials and maps have in common: a name and slots for maps.
class MtlBase : public ReferenceTarget, public ISubMap {
public:
    /// Brings the map or material, and those in its slots, to the time `t`, and narrows `valid` to
    /// the time for which that holds.
    virtual void Update(TimeValue, Interval&) {}

    const MSTR& GetName() { return name_; }
    void SetName(const MSTR& name) { name_ = name; }

private:
    MSTR name_;
};
