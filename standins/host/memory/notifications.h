#pragma once

#include <vector>

#include "standins/host/sdk/max.h"

namespace memhost {

/// Who wants to be told of what the host does, and by which function.
class Notifications {
public:
    /// Tells of `code`, in the order of the registrations. Those that are taken back or added on
    /// the way are not called.
    void broadcast(int code);

    void add(NOTIFYPROC proc, void* param, int code);
    /// Of several equal ones the first goes. False if there is none.
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
