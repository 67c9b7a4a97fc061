// Tests the plug-in as a library that the host loads.

#include <gtest/gtest.h>

#ifdef _WIN32
#include <windows.h>

#include <commctrl.h>  // relies on windows.h
#endif

#include <algorithm>
#include <functional>
#include <iostream>
#include <sstream>

#include "platform/dynamic_library.h"
#include "plugins/3dsmax/shell/menu_actions.h"
#include "plugins/3dsmax/shell/options_controls.h"
#include "standins/host/memory/host_text.h"
#include "standins/host/memory/scene_builder.h"
#include "standins/host/memory/splines.h"
#include "tests/support/registry_entries.h"

namespace {

// As in the host, the library is never unloaded.
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
    explicit StartedPlugin(const char* strict_rules = "") : scene_(strict_rules) {
        host().set_config_folder(memhost::units_from_utf8(folder_.path().u8string()));
        plugin_ = static_cast<GUP*>(class_desc().Create(FALSE));
        static auto* const kept = new std::vector<GUP*>;  // the host never frees a plug-in
        kept->push_back(plugin_);
        EXPECT_EQ(host().start_plugin(class_desc(), *plugin_), GUPRESULT_KEEP);
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

TEST(PluginLibrary, DescribesItselfToTheHost) {
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

TEST_F(StartedPlugin, KeepsItsMenuOutOfTheUsersMenuFile) {
    const struct {
        const char* what;
        int code;
        bool menu;
        int activations;
    } steps[] = {
        {"a menu file was read, and the menu is shown", NOTIFY_CUI_MENUS_POST_LOAD, true, 2},
        {"the file is about to be written", NOTIFY_CUI_MENUS_PRE_SAVE, false, 2},
        {"the same while no menu is shown", NOTIFY_CUI_MENUS_PRE_SAVE, false, 2},
        {"the file was written", NOTIFY_CUI_MENUS_POST_SAVE, true, 3},
        {"the same while the menu is shown", NOTIFY_CUI_MENUS_POST_SAVE, true, 4},
        {"another event", 244, true, 4},
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

struct PluginInStrictHost : StartedPlugin, testing::WithParamInterface<const char*> {
    PluginInStrictHost() : StartedPlugin(GetParam()) {}
};

TEST_P(PluginInStrictHost, HasAMenuWhoseActionsReachIt) {
    for (const int code : {0, NOTIFY_CUI_MENUS_POST_SAVE, NOTIFY_CUI_MENUS_POST_LOAD}) {
        host().notifications().broadcast(code);
        EXPECT_EQ(shown_menu(), kMenu);
        EXPECT_TRUE(host().menus().press(L"Velmora/Export"));
        host().notifications().broadcast(NOTIFY_CUI_MENUS_PRE_SAVE);
        EXPECT_EQ(shown_menu(), kNoMenu);
    }
    plugin_->Stop();
    host().notifications().broadcast(NOTIFY_CUI_MENUS_POST_SAVE);
    EXPECT_EQ(shown_menu(), kNoMenu);
}

INSTANTIATE_TEST_SUITE_P(Rules, PluginInStrictHost,
                         testing::Values("late-actions", "find-table-null", "late-menus",
                                         "repeated-notifications", "all"));

TEST_F(StartedPlugin, KeepsAMenuThatTheUserHasChanged) {
    host().menus().FindMenu(L"Velmora")->RemoveItem(0);
    host().notifications().broadcast(NOTIFY_CUI_MENUS_POST_LOAD);
    host().menus().UpdateMenuBar();
    EXPECT_EQ(shown_menu().size(), kMenu.size() - 1);
}

#ifdef _WIN32

void press(HWND dialog, int control) {
    SendDlgItemMessageW(dialog, control, BM_CLICK, 0, 0);
}

// A dialog of this thread, since other programs have dialogs with such titles too.
HWND own_dialog(const wchar_t* title) {
    HWND dialog = nullptr;
    do {
        dialog = FindWindowExW(nullptr, dialog, L"#32770", title);
    } while (dialog && GetWindowThreadProcessId(dialog, nullptr) != GetCurrentThreadId());
    return dialog;
}

// A user who answers the windows that come up, and turns the cameras on or off.
class User {
public:
    explicit User(bool cameras) : timer_(SetTimer(nullptr, 0, 20, act)) {
        present_ = this;
        in_settings = [cameras](HWND dialog) {
            CheckDlgButton(dialog, IDC_CAMERAS, cameras ? BST_CHECKED : BST_UNCHECKED);
            press(dialog, IDOK);
        };
    }
    User(const User&) = delete;
    User& operator=(const User&) = delete;
    ~User() { KillTimer(nullptr, timer_); }

    std::function<void(HWND dialog)> in_settings;

private:
    // A timer fires after all posted messages, so that the windows are complete by then.
    static void CALLBACK act(HWND, UINT, UINT_PTR, DWORD) {
        if (const HWND box = own_dialog(L"Error")) {
            PostMessageW(box, WM_COMMAND, IDOK, 0);
        }
        if (const HWND dialog = own_dialog(L"" TEXT_OPTIONS_TITLE)) {
            present_->in_settings(dialog);
        }
    }

    static inline User* present_ = nullptr;
    UINT_PTR timer_;
};

std::string label_at(HWND dialog, int position) {
    SendDlgItemMessageW(dialog, IDC_RADIUS_TRACKBAR, TBM_SETPOS, TRUE, position);
    NMHDR told = {GetDlgItem(dialog, IDC_RADIUS_TRACKBAR), IDC_RADIUS_TRACKBAR,
                  static_cast<UINT>(NM_RELEASEDCAPTURE)};
    SendMessageW(dialog, WM_NOTIFY, IDC_RADIUS_TRACKBAR, reinterpret_cast<LPARAM>(&told));
    char text[32] = "";
    GetDlgItemTextA(dialog, IDC_RADIUS_LABEL, text, sizeof text);
    return text;
}

// Toggles every check box and returns their previous states. Moves the trackbar unless `position`
// is 0.
std::string change_everything(HWND dialog, int position, int button) {
    const HWND trackbar = GetDlgItem(dialog, IDC_RADIUS_TRACKBAR);
    EXPECT_EQ(SendMessageW(trackbar, TBM_GETRANGEMIN, 0, 0), 1);
    EXPECT_EQ(SendMessageW(trackbar, TBM_GETRANGEMAX, 0, 0), 100);
    EXPECT_EQ(SendMessageW(trackbar, TBM_GETPOS, 0, 0), 50);
    std::string shown;
    for (const OptionControl& control : kOptionControls) {
        if (control.field != nullptr) {
            shown += IsDlgButtonChecked(dialog, control.id) == BST_CHECKED ? '1' : '0';
            press(dialog, control.id);
        }
    }
    if (position != 0) {
        EXPECT_EQ(label_at(dialog, 1), "0.10");
        EXPECT_EQ(label_at(dialog, 100), "10.0");
        label_at(dialog, position);
    }
    press(dialog, button);
    return shown;
}

// The check boxes take effect with OK, but the trackbar as soon as it is moved.
TEST_F(StartedPlugin, UsesAndSavesSettingsThatAreConfirmed) {
    const std::string saved =
        "[Curves]HairAndFur=0GeneralCurves=1[Lights]PhotometricLights=0SkyLights=1"
        "[Animation]Bones=0TransformAnimations=0CameraAnimations=0Deformable=0"
        "[General]cameras=0Layers=1";
    const struct {
        int button, position;
        std::string shown;   // check boxes when the dialog opens
        std::string file;    // lines of the settings file afterwards, without their ends
        std::string radius;  // of the curve in the next export, if there is one
    } cases[] = {
        {IDCANCEL, 0, "101111110", "", ""},
        {IDOK, 0, "101111110", saved, "\"radius\" 0.999063,"},
        {IDCANCEL, 100, "010000001", saved, "\"radius\" 10,"},
        {IDCANCEL, 1, "010000001", saved, "\"radius\" 0.104518,"},
    };
    auto wire =
        std::make_shared<memhost::SplineObject>(std::vector{memhost::polyline({{}, {3, 0, 0}})});
    wire->thickness(1).renderable(true);
    scene_.node(L"wire").object(wire);
    User user(true);
    for (const auto& one : cases) {
        std::string shown;
        user.in_settings = [&](HWND dialog) {
            shown = change_everything(dialog, one.position, one.button);
        };
        EXPECT_TRUE(host().menus().press(L"Velmora/Settings"));
        EXPECT_EQ(shown, one.shown);
        std::string file = file_contents(folder_ / "velmoraexport7.ini");
        file.erase(std::remove_if(file.begin(), file.end(), [](char c) { return c < ' '; }),
                   file.end());
        EXPECT_EQ(file, one.file);

        host().answer_save_dialog(folder_ / "wire.vsq");
        EXPECT_TRUE(host().menus().press(L"Velmora/Export"));
        const std::string scene = file_contents(folder_ / "wire.vsq");
        const size_t radius = scene.find("\"radius\"");
        EXPECT_EQ(radius == std::string::npos ? "" : scene.substr(radius, one.radius.size()),
                  one.radius);
    }
}

#else

// A user at the terminal who turns the cameras on or off.
class User {
public:
    explicit User(bool cameras)
        : answers_(std::string("\n\n\n\n\n\n\n\n") + (cameras ? "1" : "0") + "\n\n"),
          input_(std::cin.rdbuf(answers_.rdbuf())) {}
    ~User() {
        std::cin.rdbuf(input_);
        std::cin.clear();
    }

private:
    std::istringstream answers_;
    std::streambuf* input_;
};

#endif

TEST_F(StartedPlugin, CarriesOutEachCommandRepeatedly) {
    const RegistryEntries no_renderer({});
    scene_.node(L"a");
    scene_.animation_frames(0, 1);
    for (int i = 0; i < 3; ++i) {
        const bool cameras = i % 2 != 0;
        const User user(cameras);
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
        EXPECT_NE(settings.find(cameras ? "cameras=1" : "cameras=0"), std::string::npos)
            << settings;
        EXPECT_EQ(settings.find("HairAndFur=0"), std::string::npos);
        // Export Animation has turned this off, and OK saves it.
        EXPECT_NE(settings.find("TransformAnimations=0"), std::string::npos) << settings;
    }
}

}  // namespace
