#pragma once

namespace qor {

/// When this library was built, in the form "Fri Feb 11 13:51:42 2022".
const char* build_time();

}  // namespace qor
