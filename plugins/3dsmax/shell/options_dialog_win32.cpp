#include <windows.h>

#include <commctrl.h>  // relies on windows.h

#include "plugins/3dsmax/shell/host_border.h"
#include "plugins/3dsmax/shell/options_controls.h"
#include "plugins/3dsmax/shell/radius_scale.h"
#include "plugins/3dsmax/shell/string_resources.h"

namespace {

void show_multiplier(HWND dialog, float multiplier) {
    SetDlgItemTextA(dialog, IDC_RADIUS_LABEL, RadiusLabel(multiplier).c_str());
}

void take_multiplier(HWND dialog, Qor::Options& options) {
    const LRESULT position = SendDlgItemMessageW(dialog, IDC_RADIUS_TRACKBAR, TBM_GETPOS, 0, 0);
    options.CurveRadiusMultiplier = RadiusMultiplierAt(static_cast<int>(position));
}

// The trackbar always starts in the middle, whatever the multiplier is.
void show_options(HWND dialog, const Qor::Options& options) {
    CenterWindow(dialog, GetParent(dialog));
    SetFocus(dialog);
    for (const OptionControl& control : kOptionControls) {
        if (control.field != nullptr) {
            CheckDlgButton(dialog, control.id,
                           options.*control.field ? BST_CHECKED : BST_UNCHECKED);
        }
    }
    const HWND trackbar = GetDlgItem(dialog, IDC_RADIUS_TRACKBAR);
    PostMessageW(trackbar, TBM_SETRANGEMIN, TRUE, kLowestRadiusPosition);
    PostMessageW(trackbar, TBM_SETRANGEMAX, TRUE, kHighestRadiusPosition);
    PostMessageW(trackbar, TBM_SETPOS, TRUE, kMiddleRadiusPosition);
    show_multiplier(dialog, 1.0f);
}

void take_options(HWND dialog, Qor::Options& options) {
    for (const OptionControl& control : kOptionControls) {
        if (control.field == nullptr) {
            take_multiplier(dialog, options);
        } else {
            options.*control.field = IsDlgButtonChecked(dialog, control.id) == BST_CHECKED;
        }
    }
}

INT_PTR on_command(HWND dialog, WORD id, Qor::Options& options) {
    switch (id) {
        case IDOK:
            take_options(dialog, options);
            EndDialog(dialog, 1);
            options.Save();
            return 1;
        case IDCANCEL:
            EndDialog(dialog, 0);
            return 1;
        default:
            return 0;
    }
}

INT_PTR on_message(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(dialog, GWLP_USERDATA, lparam);
        show_options(dialog, *reinterpret_cast<Qor::Options*>(lparam));
        return TRUE;
    }
    // Some messages come before WM_INITDIALOG.
    auto* options = reinterpret_cast<Qor::Options*>(GetWindowLongPtrW(dialog, GWLP_USERDATA));
    if (options == nullptr) {
        return 0;
    }
    switch (message) {
        case WM_NOTIFY:
            take_multiplier(dialog, *options);
            show_multiplier(dialog, options->CurveRadiusMultiplier);
            return 0;
        case WM_COMMAND:
            return on_command(dialog, LOWORD(wparam), *options);
        default:
            return 0;
    }
}

INT_PTR CALLBACK options_dialog(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
    INT_PTR result = 0;
    WithoutExceptions([&] { result = on_message(dialog, message, wparam, lparam); });
    return result;
}

}  // namespace

namespace Qor {

bool Options::ShowDialog() {
    return DialogBoxParamW(module_handle, MAKEINTRESOURCEW(IDD_OPTIONS), host->GetMAXHWnd(),
                           options_dialog, reinterpret_cast<LPARAM>(this)) > 0;
}

}  // namespace Qor
