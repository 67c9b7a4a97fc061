#pragma once

/// What can be told: the menus' file is about to be written, was written, was read.
constexpr int NOTIFY_CUI_MENUS_PRE_SAVE = 240;
constexpr int NOTIFY_CUI_MENUS_POST_SAVE = 241;
constexpr int NOTIFY_CUI_MENUS_POST_LOAD = 245;

struct NotifyInfo {
    int intcode;
    void* callParam;
};

using NOTIFYPROC = void (*)(void* param, NotifyInfo* info);

/// `proc` is called with `param` whenever the host tells of `code`.
int RegisterNotification(NOTIFYPROC proc, void* param, int code);
/// Takes back the registration of just these three; 0 if there is none.
int UnRegisterNotification(NOTIFYPROC proc, void* param, int code);
