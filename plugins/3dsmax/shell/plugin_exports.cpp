// What the host asks a library for once it has loaded it, exported by name: by plugin_exports.def
// on Windows, by plugin_exports.map elsewhere.

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
