#pragma once

#include "standins/host/sdk/maxapi.h"

/// What `GUP::Start` answers to stay loaded.
constexpr DWORD GUPRESULT_KEEP = 0;

/// A global utility: a plug-in that the host makes and starts when it starts itself.
class GUP {
public:
    GUP() = default;
    GUP(const GUP&) = delete;
    GUP& operator=(const GUP&) = delete;
    virtual ~GUP() = default;

    virtual DWORD Start() = 0;
    virtual void Stop() = 0;
    /// The host's last call.
    virtual void DeleteThis() {}
    virtual DWORD_PTR Control(DWORD) { return 0; }

    Interface* Max() { return GetCOREInterface(); }
};
