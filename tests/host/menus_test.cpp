#include <gtest/gtest.h>

#include "standins/host/memory/memory_host.h"

namespace {

using memhost::MemoryHost;

constexpr ActionTableId kTable = 0x7bac66b7;
constexpr MenuContextId kContext = 7;

class RecordingCallback final : public ActionCallback {
public:
    BOOL ExecuteAction(int id) override {
        commands.push_back(id);
        return TRUE;
    }
    std::vector<int> commands;
};

// A plug-in's class with a table of two actions.
class PluginClass final : public ClassDesc {
public:
    int IsPublic() override { return TRUE; }
    void* Create(BOOL) override { return nullptr; }
    const MCHAR* ClassName() override { return L"Tools"; }
    const MCHAR* NonLocalizedClassName() override { return L"Tools"; }
    SClass_ID SuperClassID() override { return GUP_CLASS_ID; }
    Class_ID ClassID() override { return Class_ID(1, 2); }
    const MCHAR* Category() override { return L""; }
    int NumActionTables() override { return 1; }
    ActionTable* GetActionTable(int) override { return &table_; }

private:
    HINSTANCE__ module_ = {[](UINT id) {
        return id == 10 ? L"Cut" : id == 11 ? L"Glue " : nullptr;
    }};
    MSTR name_{L"Tools"};
    ActionDescription descriptions_[3] = {{35, 10, 10, 0}, {36, 11, 11, 0}, {37, 12, 12, 0}};
    ActionTable table_{kTable, 1, name_, nullptr, 3, descriptions_, &module_};
};

void install_menu(IMenuManager& menus, ActionTable& table) {
    IMenu* menu = GetIMenu();
    menu->SetTitle(L"Tools");
    menus.RegisterMenu(menu, 0);
    static_cast<IMenuBarContext*>(menus.GetContext(kContext))->SetMenu(menu);
    for (const int command : {36, 37, 35}) {
        IMenuItem* item = GetIMenuItem();
        item->SetActionItem(table.GetAction(command));
        menu->AddItem(item, -1);
        menu->AddItem(item, -1);  // it is there already
    }
    IMenuItem* entry = GetIMenuItem();
    entry->SetSubMenu(menu);
    menus.GetMainMenuBar()->AddItem(entry, -1);
}

std::vector<std::wstring> shown(MemoryHost& host) {
    std::vector<std::wstring> paths;
    for (const memhost::ShownMenuEntry& entry : host.menus().shown()) {
        paths.push_back(entry.path);
    }
    return paths;
}

// Twice, since a plug-in takes its menu down and puts it back whenever the menus are saved.
TEST(Menus, AMenuCanBeShownPressedAndTakenDown) {
    PluginClass plugin;
    MemoryHost host;
    RecordingCallback callback;
    IMenuManager& menus = *host.GetMenuManager();
    host.actions().add_tables(plugin);
    EXPECT_TRUE(menus.RegisterMenuBarContext(kContext, L"Tools"));
    EXPECT_FALSE(menus.RegisterMenuBarContext(kContext, L"Tools"));
    auto* context = static_cast<IMenuBarContext*>(menus.GetContext(kContext));
    ActionTable* table = host.GetActionManager()->FindTable(kTable);

    for (int round = 1; round <= 2; ++round) {
        install_menu(menus, *table);
        EXPECT_EQ(shown(host), std::vector<std::wstring>{}) << "not before the update";
        menus.UpdateMenuBar();
        EXPECT_EQ(shown(host),
                  (std::vector<std::wstring>{L"Tools", L"Tools/Glue ", L"Tools/", L"Tools/Cut"}));

        EXPECT_EQ(host.menus().press(L"Tools/Cut"), round == 2) << "once it has been activated";
        host.GetActionManager()->ActivateActionTable(&callback, kTable);
        EXPECT_TRUE(host.menus().press(L"Tools/Glue "));
        EXPECT_FALSE(host.menus().press(L"Tools"));
        EXPECT_FALSE(host.menus().press(L"Tools/Weld"));

        IMenu* menu = menus.FindMenu(L"Tools");
        ASSERT_EQ(menu, context->GetMenu());
        while (menu->NumItems() > 1) {
            menu->RemoveItem(0);
        }
        EXPECT_TRUE(menus.UnRegisterMenu(menu));
        EXPECT_EQ(menus.FindMenu(L"Tools"), nullptr);
        EXPECT_EQ(context->GetMenu(), nullptr);
        EXPECT_EQ(menus.GetMainMenuBar()->NumItems(), 0);
        menus.UpdateMenuBar();
    }
    EXPECT_EQ(callback.commands, (std::vector<int>{36, 35, 36}));
    EXPECT_EQ(host.actions().activations(kTable), 2);
}

void count(void* param, NotifyInfo* info) {
    *static_cast<int*>(param) += info->intcode;
}

void count_once(void* param, NotifyInfo* info) {
    count(param, info);
    UnRegisterNotification(count_once, param, info->intcode);
}

TEST(Menus, NotificationsReachWhoHasRegisteredForThem) {
    MemoryHost host;
    int first = 0;
    int second = 0;
    RegisterNotification(count_once, &first, NOTIFY_CUI_MENUS_PRE_SAVE);
    RegisterNotification(count, &second, NOTIFY_CUI_MENUS_PRE_SAVE);
    RegisterNotification(count, &second, NOTIFY_CUI_MENUS_POST_LOAD);
    EXPECT_FALSE(UnRegisterNotification(count, &first, NOTIFY_CUI_MENUS_PRE_SAVE));
    EXPECT_TRUE(UnRegisterNotification(count, &second, NOTIFY_CUI_MENUS_POST_LOAD));
    for (const int code : {NOTIFY_CUI_MENUS_PRE_SAVE, NOTIFY_CUI_MENUS_PRE_SAVE,
                           NOTIFY_CUI_MENUS_POST_SAVE, NOTIFY_CUI_MENUS_POST_LOAD}) {
        host.notifications().broadcast(code);
    }
    EXPECT_EQ(first, 240);
    EXPECT_EQ(second, 480);
}

}  // namespace
