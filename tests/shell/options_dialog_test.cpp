#include "plugins/3dsmax/export/options.h"

#include <gtest/gtest.h>

#include <commctrl.h>

#include <functional>

#include "plugins/3dsmax/shell/radius_scale.h"
#include "plugins/3dsmax/shell/resources.h"
#include "plugins/3dsmax/shell/string_resources.h"
#include "standins/host/memory/host_text.h"
#include "standins/host/memory/memory_host.h"
#include "tests/support/temporary_folder.h"

namespace {

using User = std::function<void(HWND dialog)>;

User waiting_user;

// A timer fires once all posted messages are done, so the dialog is as the user finds it.
void CALLBACK let_user_act(HWND, UINT, UINT_PTR timer, DWORD) {
    KillTimer(nullptr, timer);
    waiting_user(FindWindowW(nullptr, L"" TEXT_OPTIONS_TITLE));
}

std::string label_of(HWND dialog) {
    char text[32] = "";
    GetDlgItemTextA(dialog, IDC_RADIUS_LABEL, text, sizeof text);
    return text;
}

void move_trackbar(HWND dialog, int position) {
    SendDlgItemMessageW(dialog, IDC_RADIUS_TRACKBAR, TBM_SETPOS, TRUE, position);
    NMHDR told = {GetDlgItem(dialog, IDC_RADIUS_TRACKBAR), IDC_RADIUS_TRACKBAR,
                  static_cast<UINT>(NM_RELEASEDCAPTURE)};
    SendMessageW(dialog, WM_NOTIFY, IDC_RADIUS_TRACKBAR, reinterpret_cast<LPARAM>(&told));
}

class OptionsDialog : public testing::Test {
protected:
    OptionsDialog() {
        InitCommonControls();
        module_handle = GetModuleHandleW(nullptr);
        host_.set_config_folder(memhost::units_from_utf8(folder_.path().u8string()));
    }

    // Every check box is toggled, the trackbar moved, and then the button pressed.
    bool edited(Qor::Options& options, int button) {
        waiting_user = [button](HWND dialog) {
            const HWND trackbar = GetDlgItem(dialog, IDC_RADIUS_TRACKBAR);
            EXPECT_EQ(SendMessageW(trackbar, TBM_GETRANGEMIN, 0, 0), 1);
            EXPECT_EQ(SendMessageW(trackbar, TBM_GETRANGEMAX, 0, 0), 100);
            EXPECT_EQ(SendMessageW(trackbar, TBM_GETPOS, 0, 0), 50);
            EXPECT_EQ(label_of(dialog), "1.0");
            for (int id = 1; id < 1100; ++id) {
                const HWND control = GetDlgItem(dialog, id);
                if (control && SendMessageW(control, WM_GETDLGCODE, 0, 0) & DLGC_BUTTON &&
                    id >= IDC_HAIR_AND_FUR) {
                    SendMessageW(control, BM_CLICK, 0, 0);
                }
            }
            move_trackbar(dialog, 1);
            EXPECT_EQ(label_of(dialog), "0.10");
            SendDlgItemMessageW(dialog, button, BM_CLICK, 0, 0);
        };
        SetTimer(nullptr, 0, 10, let_user_act);
        return options.ShowDialog();
    }

    TemporaryFolder folder_;
    memhost::MemoryHost host_;
};

TEST_F(OptionsDialog, TakesOverAndSavesWhatIsConfirmed) {
    Qor::Options options(&host_);
    EXPECT_TRUE(edited(options, IDOK));
    const Qor::Options saved(&host_);
    for (const Qor::OptionKey& option : Qor::kOptionKeys) {
        const bool has_control = option.field != &Qor::Options::SkyLights;
        EXPECT_EQ(options.*option.field, option.initially != has_control) << option.key;
        EXPECT_EQ(saved.*option.field, options.*option.field) << option.key;
    }
    EXPECT_EQ(options.CurveRadiusMultiplier, RadiusMultiplierAt(1));
}

TEST_F(OptionsDialog, TakesOnlyTheMultiplierOverIfCancelled) {
    Qor::Options options(&host_);
    EXPECT_FALSE(edited(options, IDCANCEL));
    for (const Qor::OptionKey& option : Qor::kOptionKeys) {
        EXPECT_EQ(options.*option.field, option.initially) << option.key;
    }
    EXPECT_EQ(options.CurveRadiusMultiplier, RadiusMultiplierAt(1));
    EXPECT_EQ(file_contents(folder_ / "velmoraexport7.ini"), "");
}

}  // namespace
