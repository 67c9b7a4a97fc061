#pragma once

#include <optional>

#include "plugins/3dsmax/export/host.h"

/// Whether the block has a parameter with that id. Most host calls don't check: given an unknown
/// id, they read outside the block.
inline bool HasParam(IParamBlock2& block, ParamID id) {
    return block.IDtoIndex(id) >= 0;
}

/// A parameter's value at `t`. No value if the block has no parameter with that id, or one of
/// another type. `Type` must be one that `GetValue` takes: `float`, `int`, `Color`, `Texmap*`,
/// `const MCHAR*`.
template <typename Type>
std::optional<Type> ParamValue(IParamBlock2& block, ParamID id, TimeValue t) {
    if (!HasParam(block, id)) {
        return std::nullopt;
    }
    Type value{};  // a failed call may overwrite it
    Interval valid = FOREVER;
    if (!block.GetValue(id, t, value, valid, 0)) {
        return std::nullopt;
    }
    return value;
}
