#include "plugins/3dsmax/shell/vsqexp.h"

#include "plugins/3dsmax/shell/host_border.h"

namespace {

void install_menu(void* plugin, NotifyInfo*) {
    if (plugin != nullptr) {
        WithoutExceptions([plugin] { static_cast<VSQExp*>(plugin)->InstallMenu(); });
    }
}

void remove_menu(void* plugin, NotifyInfo*) {
    if (plugin != nullptr) {
        WithoutExceptions([plugin] { static_cast<VSQExp*>(plugin)->RemoveMenu(); });
    }
}

struct Notification {
    int code;
    NOTIFYPROC proc;
};

// The menu is built again at each start, so it is kept out of the user's menu file.
constexpr Notification kNotifications[] = {
    {NOTIFY_CUI_MENUS_POST_LOAD, install_menu},
    {NOTIFY_CUI_MENUS_PRE_SAVE, remove_menu},
    {NOTIFY_CUI_MENUS_POST_SAVE, install_menu},
};

}  // namespace

DWORD VSQExp::Start() {
    WithoutExceptions([this] {
        Interface* host = Max();
        options_ = std::make_shared<Qor::Options>(host);
        callback_ = new Callback(host, options_);
        for (const Notification& notification : kNotifications) {
            RegisterNotification(notification.proc, this, notification.code);
        }
        InstallMenu();
        INodeEventCallback* events = callback_;
        GetISceneEventManager()->RegisterCallback(events, FALSE, 0, FALSE);
    });
    return GUPRESULT_KEEP;
}

void VSQExp::Stop() {
    WithoutExceptions([this] {
        for (const Notification& notification : kNotifications) {
            UnRegisterNotification(notification.proc, this, notification.code);
        }
        RemoveMenu();
    });
}
