#pragma once

#include "standins/host/sdk/maxtypes.h"

#ifdef VSQ_HOST_GLOBAL_NAMES
// See global_names.h.
enum { ok, END };
#ifdef __clang__
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif
#define thread_local(x) x
#endif

class FPValue;

namespace MAXScript {

/// The source of a script decides what it may do. Only the last two may do anything.
enum class ScriptSource : int { NotSpecified = 0, Embedded, NonEmbedded, Dynamic };

}  // namespace MAXScript

/// Runs a script to its end. False if it has a fault or stops with an error. The host shows the
/// error to the user unless `quiet_errors` is set.
BOOL ExecuteMAXScriptScript(const MCHAR* script, MAXScript::ScriptSource source,
                            BOOL quiet_errors = FALSE, FPValue* result = nullptr,
                            BOOL log_quiet_errors = TRUE);
