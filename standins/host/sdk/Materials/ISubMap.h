#pragma once

#include "standins/host/sdk/maxtypes.h"
#include "standins/host/sdk/strclass.h"

class Texmap;

/// Whatever has slots for maps, each with a name and a switch.
class ISubMap {
public:
    virtual ~ISubMap() = default;

    virtual int NumSubTexmaps() { return 0; }
    /// Null for an empty slot. Only slots below `NumSubTexmaps()` may be asked for.
    virtual Texmap* GetSubTexmap(int) { return nullptr; }
    virtual int SubTexmapOn(int) { return TRUE; }
    /// In the language of the user interface if `localized`.
    virtual MSTR GetSubTexmapSlotName(int, bool) { return MSTR(); }
};
