#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "standins/host/memory/action_manager.h"
#include "standins/host/sdk/max.h"

namespace memhost {

class MemoryMenu;
class MemoryMenuManager;

class MemoryMenuItem final : public IMenuItem {
public:
    const MemoryAction* action() const { return action_; }
    MemoryMenu* sub_menu() const { return sub_menu_; }

    void SetActionItem(ActionItem* action) override;
    void SetSubMenu(IMenu* menu) override;

private:
    MemoryAction* action_ = nullptr;
    MemoryMenu* sub_menu_ = nullptr;
};

class MemoryMenu final : public IMenu {
public:
    explicit MemoryMenu(MemoryMenuManager& manager) : manager_(manager) {}

    const std::wstring& title() const { return title_; }
    const std::vector<std::unique_ptr<MemoryMenuItem>>& items() const { return items_; }
    void remove_items_to(const MemoryMenu& menu);

    void SetTitle(const MCHAR* title) override { title_ = title; }
    int NumItems() const override { return static_cast<int>(items_.size()); }
    void AddItem(IMenuItem* item, int position = -1) override;
    void RemoveItem(int position) override;
    void RemoveItem(IMenuItem* item) override;

private:
    MemoryMenuManager& manager_;
    std::wstring title_;
    std::vector<std::unique_ptr<MemoryMenuItem>> items_;
};

/// An entry that the user sees. `path` joins the texts from the main menu bar down, as in
/// "Edit/Undo".
struct ShownMenuEntry {
    std::wstring path;
    const MemoryAction* action;  // null for a menu
};

/// The host's menus. The user sees changes, and can press new entries, only after `UpdateMenuBar`.
class MemoryMenuManager final : public IMenuManager {
public:
    explicit MemoryMenuManager(MemoryActionManager& actions);

    /// In the order of the bar, with each menu before its items.
    const std::vector<ShownMenuEntry>& shown() const { return shown_; }

    /// Does what the user's click on an entry does. False if there is no action at `path`, or if no
    /// callback has carried it out.
    bool press(const std::wstring& path);

    /// Replaces the menus with those of a user's menu file, which has no plug-in's menus. The
    /// host tells its listeners afterwards.
    void load_file();

    // The host owns new menus, and new items until they are added to a menu.
    MemoryMenu& make_menu();
    MemoryMenuItem& make_item();
    /// Hands the item over to a menu. Null if a menu has it already.
    std::unique_ptr<MemoryMenuItem> take_item(const IMenuItem* item);

    IMenu* FindMenu(const MCHAR* title) override;
    bool RegisterMenu(IMenu* menu, DWORD flags = 0) override;
    bool UnRegisterMenu(IMenu* menu) override;
    bool RegisterMenuBarContext(MenuContextId id, const MCHAR* name) override;
    IMenuContext* GetContext(MenuContextId id) override;
    IMenu* GetMainMenuBar() override;
    void UpdateMenuBar() override;

private:
    class MenuBarContext final : public IMenuBarContext {
    public:
        void SetMenu(IMenu* menu) override { menu_ = menu; }
        IMenu* GetMenu() override { return menu_; }

    private:
        IMenu* menu_ = nullptr;
    };

    void show_items(const IMenu& menu, const std::wstring& path);

    MemoryActionManager& actions_;
    std::vector<std::unique_ptr<MemoryMenu>> menus_;  // registered or not
    std::vector<std::unique_ptr<MemoryMenuItem>> loose_items_;
    std::vector<MemoryMenu*> registered_;
    std::map<MenuContextId, MenuBarContext> contexts_;
    std::vector<ShownMenuEntry> shown_;
};

}  // namespace memhost
