#pragma once

#include "standins/host/sdk/actiontable.h"

class IMenu;

/// An entry of a menu: an action or a submenu.
class IMenuItem {
public:
    virtual ~IMenuItem() = default;

    virtual void SetActionItem(ActionItem* action) = 0;
    virtual void SetSubMenu(IMenu* menu) = 0;
};

class IMenu {
public:
    virtual ~IMenu() = default;

    virtual void SetTitle(const MCHAR* title) = 0;
    virtual int NumItems() const = 0;
    /// The menu takes ownership of the item. Position -1 means the end.
    virtual void AddItem(IMenuItem* item, int position = -1) = 0;
    /// Deletes the item.
    virtual void RemoveItem(int position) = 0;
    virtual void RemoveItem(IMenuItem* item) = 0;
};

/// Each returns a new object, which nothing refers to yet.
IMenu* GetIMenu();
IMenuItem* GetIMenuItem();
