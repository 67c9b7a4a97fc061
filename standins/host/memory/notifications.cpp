#include "standins/host/memory/notifications.h"

#include <algorithm>

#include "standins/host/memory/memory_host.h"
#include "standins/host/memory/strict_rules.h"

namespace memhost {

void Notifications::broadcast(int code) {
    std::vector<Registration> at_the_start = registrations_;
    if (host_obeys(StrictRule::kRepeatedNotifications)) {
        at_the_start.insert(at_the_start.end(), registrations_.begin(), registrations_.end());
        std::reverse(at_the_start.begin(), at_the_start.end());
    }
    for (const Registration& registration : at_the_start) {
        const bool still_there = std::find(registrations_.begin(), registrations_.end(),
                                           registration) != registrations_.end();
        if (registration.code == code && still_there) {
            NotifyInfo info = {code, nullptr};
            registration.proc(registration.param, &info);
        }
    }
}

void Notifications::add(NOTIFYPROC proc, void* param, int code) {
    registrations_.push_back({proc, param, code});
}

bool Notifications::remove(NOTIFYPROC proc, void* param, int code) {
    const auto found =
        std::find(registrations_.begin(), registrations_.end(), Registration{proc, param, code});
    if (found == registrations_.end()) {
        return false;
    }
    registrations_.erase(found);
    return true;
}

}  // namespace memhost

int RegisterNotification(NOTIFYPROC proc, void* param, int code) {
    memhost::MemoryHost* host = memhost::MemoryHost::current();
    if (!host) {
        return FALSE;
    }
    host->notifications().add(proc, param, code);
    return TRUE;
}

int UnRegisterNotification(NOTIFYPROC proc, void* param, int code) {
    memhost::MemoryHost* host = memhost::MemoryHost::current();
    return host && host->notifications().remove(proc, param, code);
}
