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

/// A place for a menu bar. `RegisterMenuBarContext` makes this kind of context.
class IMenuBarContext : public IMenuContext {
public:
    /// Null removes the menu.
    virtual void SetMenu(IMenu* menu) = 0;
    virtual IMenu* GetMenu() = 0;
};

class IMenuManager {
public:
    virtual ~IMenuManager() = default;

    /// Searches the registered menus. Null if none has that title.
    virtual IMenu* FindMenu(const MCHAR* title) = 0;
    /// The host owns a registered menu. Unregistering deletes it, and every item that opens it.
    virtual bool RegisterMenu(IMenu* menu, DWORD flags = 0) = 0;
    virtual bool UnRegisterMenu(IMenu* menu) = 0;

    /// True if the id is new.
    virtual bool RegisterMenuBarContext(MenuContextId id, const MCHAR* name) = 0;
    /// Null for an id that isn't registered.
    virtual IMenuContext* GetContext(MenuContextId id) = 0;

    virtual IMenu* GetMainMenuBar() = 0;
    /// Shows the current contents of the main menu bar.
    virtual void UpdateMenuBar() = 0;
};
