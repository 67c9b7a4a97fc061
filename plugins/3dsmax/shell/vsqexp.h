#pragma once

#include <memory>

#include "plugins/3dsmax/export/host.h"
#include "plugins/3dsmax/export/options.h"
#include "plugins/3dsmax/shell/callback.h"

/// The plug-in as the host holds it. From `Start` on its menu stands on the main menu bar, and its
/// callback waits for commands and for events of nodes. What it holds stays until the process ends.
class VSQExp final : public GUP {
public:
    DWORD Start() override;
    void Stop() override;
    void DeleteThis() override {}

    /// Puts the menu at the end of the main menu bar, unless a menu of its title is there: the user
    /// may have changed that one. The action table leads to the callback afterwards in any case.
    void InstallMenu();

    /// Takes the menu away, if there is one.
    void RemoveMenu();

private:
    std::shared_ptr<Qor::Options> options_;
    Callback* callback_ = nullptr;  // never freed: the host goes on sending events
};
