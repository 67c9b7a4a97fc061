#pragma once

#include "standins/host/sdk/imenus.h"
#include "standins/host/sdk/maxtypes.h"

using MenuContextId = int;

/// The context of the bar at the top of the host's window.
constexpr MenuContextId kMainMenuBar = 1;

/// A place where the host can show menus.
class IMenuContext {
public:
    virtual ~IMenuContext() = default;
};

/// A place for a menu bar: the context that `RegisterMenuBarContext` makes.
class IMenuBarContext : public IMenuContext {
public:
    /// Null takes the menu away.
    virtual void SetMenu(IMenu* menu) = 0;
    virtual IMenu* GetMenu() = 0;
};

class IMenuManager {
public:
    virtual ~IMenuManager() = default;

    /// Among the registered menus; null if none has that title.
    virtual IMenu* FindMenu(const MCHAR* title) = 0;
    /// A registered menu belongs to the host, and is gone once it is unregistered, with every item
    /// that leads to it.
    virtual bool RegisterMenu(IMenu* menu, DWORD flags = 0) = 0;
    virtual bool UnRegisterMenu(IMenu* menu) = 0;

    /// True the first time that an id is seen.
    virtual bool RegisterMenuBarContext(MenuContextId id, const MCHAR* name) = 0;
    /// Null for an id that nobody has registered.
    virtual IMenuContext* GetContext(MenuContextId id) = 0;

    virtual IMenu* GetMainMenuBar() = 0;
    /// Shows the main menu bar as it is by now.
    virtual void UpdateMenuBar() = 0;
};
