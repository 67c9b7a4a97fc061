#pragma once

#include "standins/host/sdk/maxapi.h"

/// `GUP::Start` returns this to stay loaded.
constexpr DWORD GUPRESULT_KEEP = 0;

/// A global utility: a plug-in that the host creates and starts when the host itself starts.
class GUP {
public:
    GUP() = default;
    GUP(const GUP&) = delete;
    GUP& operator=(const GUP&) = delete;
    virtual ~GUP() = default;

    virtual DWORD Start() = 0;
    virtual void Stop() = 0;
    /// The last call that the host makes.
    virtual void DeleteThis() {}
    virtual DWORD_PTR Control(DWORD) { return 0; }

    Interface* Max() { return GetCOREInterface(); }
};
