#pragma once

namespace qor {

/// True if the elements of `xml` are nested more than 256 levels deep. The XML library parses by
/// recursion, so a text of thousands of levels would overflow the stack of the host's thread.
/// Takes one scan, whatever the text.
bool IsNestedTooDeep(const char* xml);

}  // namespace qor
