#pragma once

#include "standins/host/sdk/maxtypes.h"
#include "standins/host/sdk/strclass.h"

class Texmap;

/// The base class of everything with slots for maps. Each slot has a name and a switch.
class ISubMap {
public:
    virtual ~ISubMap() = default;

    virtual int NumSubTexmaps() { return 0; }
    /// Null for an empty slot. The argument must be below `NumSubTexmaps()`.
    virtual Texmap* GetSubTexmap(int) { return nullptr; }
    virtual int SubTexmapOn(int) { return TRUE; }
    /// Uses the language of the user interface if `localized` is true.
    virtual MSTR GetSubTexmapSlotName(int, bool) { return MSTR(); }
};
