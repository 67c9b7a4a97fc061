#include "plugins/3dsmax/shell/menu_actions.h"
#include "plugins/3dsmax/shell/string_resources.h"
#include "plugins/3dsmax/shell/vsqexp.h"
#include "plugins/3dsmax/shell/vsqexp_class_desc.h"

namespace {

MSTR menu_title() {
    return MSTR(LoadStringResource(IDS_MENU_TITLE));
}

void show_in_context(IMenuManager* menus, IMenu* menu) {
    // No context was registered if a menu with this title already existed.
    if (auto* context = static_cast<IMenuBarContext*>(menus->GetContext(kMenuContextId))) {
        context->SetMenu(menu);
    }
}

// The host may not have registered the plug-in's actions yet.
ActionTable* find_table(IActionManager* actions) {
    ActionTable* table = actions->FindTable(kActionTableId);
    return table != nullptr ? table : GetVSQExpClassDesc()->GetActionTable(0);
}

void add_actions(IMenu* menu, ActionTable* table) {
    for (const MenuAction& action : kMenuActions) {
        IMenuItem* item = GetIMenuItem();
        item->SetActionItem(table->GetAction(action.command_id));
        menu->AddItem(item, -1);
    }
}

}  // namespace

void VSQExp::InstallMenu() {
    IMenuManager* menus = Max()->GetMenuManager();
    IActionManager* actions = Max()->GetActionManager();
    const MSTR title = menu_title();

    actions->ActivateActionTable(callback_, kActionTableId);
    if (menus->FindMenu(title.data()) != nullptr) {
        return;
    }

    IMenu* bar = menus->GetMainMenuBar();
    ActionTable* table = find_table(actions);
    if (bar == nullptr || table == nullptr) {
        return;  // the next menu notification tries again
    }
    menus->RegisterMenuBarContext(kMenuContextId, title.data());
    IMenu* menu = GetIMenu();
    menu->SetTitle(title.data());
    menus->RegisterMenu(menu, 0);
    show_in_context(menus, menu);
    add_actions(menu, table);

    IMenuItem* in_bar = GetIMenuItem();
    in_bar->SetSubMenu(menu);
    bar->AddItem(in_bar, -1);
    menus->UpdateMenuBar();
}

void VSQExp::RemoveMenu() {
    IMenuManager* menus = Max()->GetMenuManager();
    const MSTR title = menu_title();
    IMenu* menu = menus->FindMenu(title.data());
    if (menu == nullptr) {
        return;
    }
    while (menu->NumItems() >= 1) {
        menu->RemoveItem(0);
    }
    show_in_context(menus, nullptr);
    menus->UnRegisterMenu(menu);
    menus->UpdateMenuBar();
}
