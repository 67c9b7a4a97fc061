#pragma once

/// Notifications: the menu file is about to be written, has been written, has been read.
constexpr int NOTIFY_CUI_MENUS_PRE_SAVE = 240;
constexpr int NOTIFY_CUI_MENUS_POST_SAVE = 241;
constexpr int NOTIFY_CUI_MENUS_POST_LOAD = 245;

struct NotifyInfo {
    int intcode;
    void* callParam;
};

using NOTIFYPROC = void (*)(void* param, NotifyInfo* info);

/// The host calls `proc` with `param` whenever it sends the notification `code`.
int RegisterNotification(NOTIFYPROC proc, void* param, int code);
/// Removes the registration with exactly these three values. 0 if there is none.
int UnRegisterNotification(NOTIFYPROC proc, void* param, int code);
