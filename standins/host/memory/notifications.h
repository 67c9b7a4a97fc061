#pragma once

#include <vector>

#include "standins/host/sdk/max.h"

namespace memhost {

/// The registered callbacks for the host's notifications.
class Notifications {
public:
    /// Calls the callbacks for `code`, in order of registration. Callbacks that are added or
    /// removed meanwhile aren't called.
    void broadcast(int code);

    void add(NOTIFYPROC proc, void* param, int code);
    /// Removes the first of several equal registrations. False if there is none.
    bool remove(NOTIFYPROC proc, void* param, int code);

private:
    struct Registration {
        NOTIFYPROC proc;
        void* param;
        int code;

        bool operator==(const Registration& other) const {
            return proc == other.proc && param == other.param && code == other.code;
        }
    };

    std::vector<Registration> registrations_;
};

}  // namespace memhost
