# Writes the source of qor::build_time() to OUTPUT, in the form "Fri Feb 11 13:51:42 2022", with a
# blank in front of a day of one digit.
string(TIMESTAMP stamp "%a %b %d %H:%M:%S %Y")
string(REGEX REPLACE "^(... ...) 0" "\\1  " stamp "${stamp}")
file(WRITE ${OUTPUT}
"#include \"importers/sceneapi/dev/build_time.h\"

namespace qor {

const char* build_time() { return \"${stamp}\"; }

}  // namespace qor
")
