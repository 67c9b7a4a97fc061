# Writes a source file that defines qor::build_time() to OUTPUT. The time has the form
# "Fri Feb 11 13:51:42 2022"; a blank pads a one-digit day.

# A reproducible build must not depend on the machine's time zone.
if(DEFINED ENV{SOURCE_DATE_EPOCH})
    set(zone UTC)
endif()
string(TIMESTAMP stamp "%a %b %d %H:%M:%S %Y" ${zone})
string(REGEX REPLACE "^(... ...) 0" "\\1  " stamp "${stamp}")
file(WRITE ${OUTPUT}
"#include \"importers/sceneapi/dev/build_time.h\"

namespace qor {

const char* build_time() { return \"${stamp}\"; }

}  // namespace qor
")
