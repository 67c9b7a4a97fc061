#include "standins/host/sdk/max.h"

void CenterWindow(HWND child, HWND parent) {
    RECT area;
    const bool has_area =
        parent ? GetWindowRect(parent, &area) : SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    RECT window;
    if (!has_area || !GetWindowRect(child, &window)) {
        return;
    }
    const LONG left = area.left + ((area.right - area.left) - (window.right - window.left)) / 2;
    const LONG top = area.top + ((area.bottom - area.top) - (window.bottom - window.top)) / 2;
    SetWindowPos(child, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}
