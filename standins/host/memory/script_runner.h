#pragma once

#include <string>
#include <vector>

#include "standins/host/sdk/max.h"
#include "standins/host/sdk/maxscript/maxscript.h"

namespace memhost {

class MemoryHost;

/// Runs MAXScript without an engine for it: it knows two scripts by what only they do, and carries
/// out what they would. One turns the hair of every object into a spline object of the object's
/// name, with the attribute block `velmora_hair_and_fur_data`; the other deletes every shape whose
/// attributes have `velmora_delete`. Any other script fails.
class ScriptRunner {
public:
    struct Call {
        std::wstring script;
        MAXScript::ScriptSource source;
        bool quiet_errors;
        bool log_quiet_errors;
    };

    /// All scripts so far, those that failed among them.
    const std::vector<Call>& calls() const { return calls_; }

    /// From now on every script fails, and does nothing.
    void set_failing(bool failing = true) { failing_ = failing; }

    /// False if the script fails.
    bool run(MemoryHost& host, const Call& call);

private:
    std::vector<Call> calls_;
    bool failing_ = false;
};

}  // namespace memhost
