# Writes the source of qor::build_time() to OUTPUT, in the form "Fri Feb 11 13:51:42 2022", with a
# blank in front of a day of one digit.
# A build that is to be reproduced must not depend on the zone of the machine.
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
