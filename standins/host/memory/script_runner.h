#pragma once

#include <string>
#include <vector>

#include "standins/host/sdk/max.h"
#include "standins/host/sdk/maxscript/maxscript.h"

namespace memhost {

class MemoryHost;

/// Runs MAXScript without an interpreter: it recognises two scripts by a phrase that only they
/// contain, and does what they would do. One turns the hair of every object into a spline object of
/// the same name, with the attribute block `velmora_hair_and_fur_data`. The other deletes every
/// shape whose attributes include `velmora_delete`. Any other script fails.
class ScriptRunner {
public:
    struct Call {
        std::wstring script;
        MAXScript::ScriptSource source;
        bool quiet_errors;
        bool log_quiet_errors;
    };

    /// All scripts so far, including those that failed.
    const std::vector<Call>& calls() const { return calls_; }

    /// From now on every script fails and does nothing.
    void set_failing(bool failing = true) { failing_ = failing; }

    /// False if the script fails.
    bool run(MemoryHost& host, const Call& call);

private:
    std::vector<Call> calls_;
    bool failing_ = false;
};

}  // namespace memhost
