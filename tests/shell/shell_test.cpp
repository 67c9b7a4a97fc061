// The plug-in as the library that the host loads.

#include <gtest/gtest.h>

#include <iostream>
#include <sstream>

#include "platform/dynamic_library.h"
#include "plugins/3dsmax/shell/menu_actions.h"
#include "plugins/3dsmax/shell/resources.h"
#include "standins/host/memory/host_text.h"
#include "standins/host/memory/scene_builder.h"
#include "tests/support/registry_entries.h"

namespace {

// As in the host, it's never unloaded.
const platform::DynamicLibrary& library() {
    static const auto* loaded =
        new std::optional<platform::DynamicLibrary>(platform::DynamicLibrary::open(PLUGIN_LIBRARY));
    return loaded->value();
}

template <typename Result, typename... Arguments>
Result exported(const char* name, Arguments... arguments) {
    return reinterpret_cast<Result (*)(Arguments...)>(library().find(name))(arguments...);
}

ClassDesc& class_desc() {
    return *exported<ClassDesc*>("LibClassDesc", 0);
}

const std::vector<std::wstring> kMenu = {L"Velmora",
                                         L"Velmora/Render",
                                         L"Velmora/Update",
                                         L"Velmora/Export",
                                         L"Velmora/Export Animation ",
                                         L"Velmora/Settings"};
const std::vector<std::wstring> kNoMenu;

class StartedPlugin : public testing::Test {
protected:
    StartedPlugin() {
        host().set_config_folder(memhost::units_from_utf8(folder_.path().u8string()));
        host().actions().add_tables(class_desc());
        plugin_ = static_cast<GUP*>(class_desc().Create(FALSE));
        static auto* const kept = new std::vector<GUP*>;  // nobody ever frees a plug-in
        kept->push_back(plugin_);
        EXPECT_EQ(plugin_->Start(), GUPRESULT_KEEP);
    }

    memhost::MemoryHost& host() { return scene_.host(); }

    std::vector<std::wstring> shown_menu() {
        std::vector<std::wstring> paths;
        for (const memhost::ShownMenuEntry& entry : host().menus().shown()) {
            paths.push_back(entry.path);
        }
        return paths;
    }

    TemporaryFolder folder_;
    memhost::SceneBuilder scene_;
    GUP* plugin_;
};

TEST(PluginLibrary, TellsTheHostWhatItIs) {
    memhost::MemoryHost host;
    EXPECT_EQ(exported<const wchar_t*>("LibDescription"),
              std::wstring(L"Velmora VSQ File Exporter for 3D Studio Max"));
    EXPECT_EQ(exported<int>("LibNumberClasses"), 1);
    EXPECT_EQ(exported<ULONG>("LibVersion"), 0x61A83E00u);
    EXPECT_EQ(exported<ULONG>("CanAutoDefer"), 1u);
    EXPECT_EQ(exported<ClassDesc*>("LibClassDesc", 1), nullptr);
    EXPECT_EQ(exported<ClassDesc*>("LibClassDesc", -1), nullptr);

    ClassDesc& description = class_desc();
    const wchar_t* text = description.NonLocalizedClassName();
    EXPECT_EQ(text, std::wstring(L"VSQExp"));
    EXPECT_EQ(description.Category(), std::wstring(L"Normal"));
    EXPECT_EQ(text, std::wstring(L"Normal")) << "all texts share a buffer";
    EXPECT_EQ(description.ClassName(), std::wstring(L"VSQExp"));
    EXPECT_EQ(description.IsPublic(), 1);
    EXPECT_EQ(description.SuperClassID(), 4320u);
    EXPECT_EQ(description.ClassID(), Class_ID(0x066E4F53, 0x422547A2));
    ASSERT_EQ(description.NumActionTables(), 1);
    EXPECT_NE(description.GetActionTable(0), nullptr);
    EXPECT_EQ(description.GetActionTable(0), description.GetActionTable(0));
}

TEST_F(StartedPlugin, TakesItsMenuOutOfTheUsersMenuFile) {
    const struct {
        const char* what;
        int code;
        bool menu;
        int activations;
    } steps[] = {
        {"a menu file was read, with the menu in place", NOTIFY_CUI_MENUS_POST_LOAD, true, 2},
        {"is about to be written", NOTIFY_CUI_MENUS_PRE_SAVE, false, 2},
        {"and again, without a menu", NOTIFY_CUI_MENUS_PRE_SAVE, false, 2},
        {"was written", NOTIFY_CUI_MENUS_POST_SAVE, true, 3},
        {"and again, with the menu in place", NOTIFY_CUI_MENUS_POST_SAVE, true, 4},
        {"something else", 244, true, 4},
    };
    EXPECT_EQ(shown_menu(), kMenu);
    EXPECT_EQ(host().actions().activations(kActionTableId), 1);
    for (const auto& step : steps) {
        host().notifications().broadcast(step.code);
        EXPECT_EQ(shown_menu(), step.menu ? kMenu : kNoMenu) << step.what;
        EXPECT_EQ(host().actions().activations(kActionTableId), step.activations) << step.what;
    }

    plugin_->Stop();
    EXPECT_EQ(shown_menu(), kNoMenu);
    host().notifications().broadcast(NOTIFY_CUI_MENUS_POST_LOAD);
    EXPECT_EQ(shown_menu(), kNoMenu);
    plugin_->DeleteThis();
}

TEST_F(StartedPlugin, LeavesAMenuThatTheUserHasChanged) {
    host().menus().FindMenu(L"Velmora")->RemoveItem(0);
    host().notifications().broadcast(NOTIFY_CUI_MENUS_POST_LOAD);
    host().menus().UpdateMenuBar();
    EXPECT_EQ(shown_menu().size(), kMenu.size() - 1);
}

#ifdef _WIN32

// The user before the windows that come up: closes message boxes, and in the settings turns the
// cameras on or off and presses OK.
void CALLBACK act_as_user(HWND, UINT, UINT_PTR, DWORD) {
    if (const HWND box = FindWindowW(L"#32770", L"Error")) {
        PostMessageW(box, WM_COMMAND, IDOK, 0);
    }
    if (const HWND dialog = FindWindowW(nullptr, L"" TEXT_OPTIONS_TITLE)) {
        SendDlgItemMessageW(dialog, IDC_CAMERAS, BM_CLICK, 0, 0);
        SendDlgItemMessageW(dialog, IDOK, BM_CLICK, 0, 0);
    }
}

class User {
public:
    User() : timer_(SetTimer(nullptr, 0, 20, act_as_user)) {}
    ~User() { KillTimer(nullptr, timer_); }

private:
    UINT_PTR timer_;
};

#else

// The user at the terminal, who turns the cameras on or off.
class User {
public:
    User() : input_(std::cin.rdbuf(answers_.rdbuf())) {}
    ~User() {
        std::cin.rdbuf(input_);
        std::cin.clear();
    }

private:
    static inline int times_ = 0;
    std::istringstream answers_{times_++ % 2 == 0 ? "\n\n\n\n\n\n\n\n0\n\n"
                                                  : "\n\n\n\n\n\n\n\n1\n\n"};
    std::streambuf* input_;
};

#endif

TEST_F(StartedPlugin, CarriesOutEachCommandAsOftenAsItIsPressed) {
    const RegistryEntries no_renderer({});
    scene_.node(L"a");
    scene_.animation_frames(0, 1);
    for (int i = 0; i < 3; ++i) {
        const User user;
        host().notifications().broadcast(NOTIFY_CUI_MENUS_PRE_SAVE);
        EXPECT_FALSE(host().menus().press(L"Velmora/Export"));
        host().notifications().broadcast(NOTIFY_CUI_MENUS_POST_SAVE);

        const std::string name = "s" + std::to_string(i);
        host().answer_save_dialog(folder_ / name + ".vsq");
        EXPECT_TRUE(host().menus().press(L"Velmora/Export"));
        EXPECT_NE(file_contents(folder_ / name + ".vsq"), "");

        host().answer_save_dialog(folder_ / name + "a.vsq");
        EXPECT_TRUE(host().menus().press(L"Velmora/Export Animation "));
        EXPECT_NE(file_contents(folder_ / name + "a.py"), "");
        EXPECT_TRUE(host().menus().press(L"Velmora/Render"));
        EXPECT_TRUE(host().menus().press(L"Velmora/Update"));
        EXPECT_EQ(host().progress().ended, 4 * (i + 1));

        EXPECT_TRUE(host().menus().press(L"Velmora/Settings"));
        const std::string settings = file_contents(folder_ / "velmoraexport7.ini");
        EXPECT_EQ(settings.find("cameras=0") != std::string::npos, i % 2 == 0) << settings;
        EXPECT_EQ(settings.find("HairAndFur=0"), std::string::npos);
    }
}

}  // namespace
