#pragma once

#include <functional>

namespace vsqexport {

/// Runs `work` on a stack that is deep enough for recursion along a chain of a hundred thousand
/// nodes, as in the model library, and passes on its exceptions.
void run_on_deep_stack(const std::function<void()>& work);

}  // namespace vsqexport
