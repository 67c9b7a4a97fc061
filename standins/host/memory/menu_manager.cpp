#include "standins/host/memory/menu_manager.h"

#include <algorithm>
#include <utility>

#include "standins/host/memory/memory_host.h"

namespace memhost {

// The host makes all actions, menus and items, so they are always of the host's own classes.
void MemoryMenuItem::SetActionItem(ActionItem* action) {
    action_ = static_cast<MemoryAction*>(action);
}

void MemoryMenuItem::SetSubMenu(IMenu* menu) {
    sub_menu_ = static_cast<MemoryMenu*>(menu);
}

void MemoryMenu::AddItem(IMenuItem* item, int position) {
    std::unique_ptr<MemoryMenuItem> taken = manager_.take_item(item);
    if (!taken) {
        return;
    }
    const bool inside = position >= 0 && position < NumItems();
    items_.insert(inside ? items_.begin() + position : items_.end(), std::move(taken));
}

void MemoryMenu::RemoveItem(int position) {
    if (position >= 0 && position < NumItems()) {
        items_.erase(items_.begin() + position);
    }
}

void MemoryMenu::RemoveItem(IMenuItem* item) {
    items_.erase(std::remove_if(items_.begin(), items_.end(),
                                [item](const auto& owned) { return owned.get() == item; }),
                 items_.end());
}

void MemoryMenu::remove_items_to(const MemoryMenu& menu) {
    items_.erase(std::remove_if(items_.begin(), items_.end(),
                                [&menu](const auto& owned) { return owned->sub_menu() == &menu; }),
                 items_.end());
}

MemoryMenuManager::MemoryMenuManager(MemoryActionManager& actions) : actions_(actions) {
    MemoryMenu& bar = make_menu();
    bar.SetTitle(L"Main Menu Bar");
    RegisterMenu(&bar);
    contexts_[kMainMenuBar].SetMenu(&bar);
}

bool MemoryMenuManager::press(const std::wstring& path) {
    for (const ShownMenuEntry& entry : shown_) {
        if (entry.path == path && entry.action != nullptr) {
            return actions_.execute(*entry.action);
        }
    }
    return false;
}

void MemoryMenuManager::load_file() {
    IMenu* const bar = GetMainMenuBar();
    const std::vector<MemoryMenu*> before = registered_;
    for (MemoryMenu* const menu : before) {
        if (menu != bar) {
            UnRegisterMenu(menu);
        }
    }
    UpdateMenuBar();
}

MemoryMenu& MemoryMenuManager::make_menu() {
    menus_.push_back(std::make_unique<MemoryMenu>(*this));
    return *menus_.back();
}

MemoryMenuItem& MemoryMenuManager::make_item() {
    loose_items_.push_back(std::make_unique<MemoryMenuItem>());
    return *loose_items_.back();
}

std::unique_ptr<MemoryMenuItem> MemoryMenuManager::take_item(const IMenuItem* item) {
    const auto found = std::find_if(loose_items_.begin(), loose_items_.end(),
                                    [item](const auto& owned) { return owned.get() == item; });
    if (found == loose_items_.end()) {
        return nullptr;
    }
    std::unique_ptr<MemoryMenuItem> taken = std::move(*found);
    loose_items_.erase(found);
    return taken;
}

IMenu* MemoryMenuManager::FindMenu(const MCHAR* title) {
    const auto found = std::find_if(registered_.begin(), registered_.end(),
                                    [title](MemoryMenu* menu) { return menu->title() == title; });
    return found == registered_.end() ? nullptr : *found;
}

bool MemoryMenuManager::RegisterMenu(IMenu* menu, DWORD) {
    if (menu == nullptr ||
        std::find(registered_.begin(), registered_.end(), menu) != registered_.end()) {
        return false;
    }
    registered_.push_back(static_cast<MemoryMenu*>(menu));
    return true;
}

bool MemoryMenuManager::UnRegisterMenu(IMenu* menu) {
    const auto found = std::find(registered_.begin(), registered_.end(), menu);
    if (found == registered_.end()) {
        return false;
    }
    MemoryMenu* going = *found;
    registered_.erase(found);
    for (const std::unique_ptr<MemoryMenu>& other : menus_) {
        other->remove_items_to(*going);
    }
    for (auto& [id, context] : contexts_) {
        if (context.GetMenu() == going) {
            context.SetMenu(nullptr);
        }
    }
    menus_.erase(std::find_if(menus_.begin(), menus_.end(),
                              [going](const auto& owned) { return owned.get() == going; }));
    return true;
}

bool MemoryMenuManager::RegisterMenuBarContext(MenuContextId id, const MCHAR*) {
    return contexts_.emplace(std::piecewise_construct, std::forward_as_tuple(id), std::tuple<>())
        .second;
}

IMenuContext* MemoryMenuManager::GetContext(MenuContextId id) {
    const auto found = contexts_.find(id);
    return found == contexts_.end() ? nullptr : &found->second;
}

IMenu* MemoryMenuManager::GetMainMenuBar() {
    return contexts_[kMainMenuBar].GetMenu();
}

void MemoryMenuManager::UpdateMenuBar() {
    shown_.clear();
    if (const IMenu* bar = GetMainMenuBar()) {
        show_items(*bar, L"");
    }
}

void MemoryMenuManager::show_items(const IMenu& menu, const std::wstring& path) {
    for (const auto& item : static_cast<const MemoryMenu&>(menu).items()) {
        if (const MemoryMenu* below = item->sub_menu()) {
            shown_.push_back({path + below->title(), nullptr});
            show_items(*below, shown_.back().path + L"/");
        } else if (const MemoryAction* action = item->action()) {
            shown_.push_back({path + action->text(), action});
        }
    }
}

}  // namespace memhost

IMenu* GetIMenu() {
    memhost::MemoryHost* host = memhost::MemoryHost::current();
    return host ? &host->menus().make_menu() : nullptr;
}

IMenuItem* GetIMenuItem() {
    memhost::MemoryHost* host = memhost::MemoryHost::current();
    return host ? &host->menus().make_item() : nullptr;
}
