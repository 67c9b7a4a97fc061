#pragma once

#include <functional>

namespace vsqexport {

/// Runs `work` with a stack deep enough for what recurses along a chain of a hundred thousand
/// nodes, as the model library does, and passes its exceptions on.
void run_on_deep_stack(const std::function<void()>& work);

}  // namespace vsqexport
