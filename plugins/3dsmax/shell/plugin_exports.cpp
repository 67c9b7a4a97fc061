// The functions that the host looks up by name in a library it has loaded. They are exported by
// plugin_exports.def on Windows and by plugin_exports.map elsewhere.

#include "plugins/3dsmax/shell/resources.h"
#include "plugins/3dsmax/shell/string_resources.h"
#include "plugins/3dsmax/shell/vsqexp_class_desc.h"

extern "C" {

const MCHAR* LibDescription() {
    return LoadStringResource(IDS_LIB_DESCRIPTION);
}

int LibNumberClasses() {
    return 1;
}

ClassDesc* LibClassDesc(int i) {
    return i == 0 ? GetVSQExpClassDesc() : nullptr;
}

ULONG LibVersion() {
    return VERSION_3DSMAX;
}

ULONG CanAutoDefer() {
    return 1;
}

}  // extern "C"
