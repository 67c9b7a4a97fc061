#pragma once

#include <memory>

#include "plugins/3dsmax/export/host.h"
#include "plugins/3dsmax/export/options.h"
#include "plugins/3dsmax/shell/callback.h"

/// The plug-in's object in the host. From `Start` on, its menu is on the main menu bar, and its
/// callback receives commands and node events. Its members last until the process ends.
class VSQExp final : public GUP {
public:
    DWORD Start() override;
    void Stop() override;
    void DeleteThis() override {}

    /// Adds the menu at the end of the main menu bar, unless a menu with its title is already
    /// there: the user may have changed that one. In either case the action table then calls the
    /// callback.
    void InstallMenu();

    /// Removes the menu, if there is one.
    void RemoveMenu();

private:
    std::shared_ptr<Qor::Options> options_;
    Callback* callback_ = nullptr;  // never freed: the host goes on sending events
};
