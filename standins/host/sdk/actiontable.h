#pragma once

#include "standins/host/sdk/maxtypes.h"

/// Carries out the actions of a table.
class ActionCallback {
public:
    ActionCallback() = default;
    ActionCallback(const ActionCallback&) = delete;
    ActionCallback& operator=(const ActionCallback&) = delete;
    virtual ~ActionCallback() = default;

    virtual BOOL ExecuteAction(int) { return FALSE; }
};
