#pragma once

#include "standins/host/sdk/actiontable.h"

class IMenu;

/// An entry of a menu: an action, or a menu below.
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
    /// The item is the menu's from now on. Position -1 is the end.
    virtual void AddItem(IMenuItem* item, int position = -1) = 0;
    /// The item is gone afterwards.
    virtual void RemoveItem(int position) = 0;
    virtual void RemoveItem(IMenuItem* item) = 0;
};

/// New ones, which nothing refers to yet.
IMenu* GetIMenu();
IMenuItem* GetIMenuItem();
