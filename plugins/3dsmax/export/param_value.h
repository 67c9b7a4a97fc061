#pragma once

#include <optional>

#include "plugins/3dsmax/export/host.h"

/// Whether the block has a parameter of that id. The host doesn't look before most of its calls:
/// for an id that isn't there they read outside the block.
inline bool HasParam(IParamBlock2& block, ParamID id) {
    return block.IDtoIndex(id) >= 0;
}

/// A parameter's value at `t`. None if the block has no parameter of that id, or one of another
/// type. `Type` is one that `GetValue` takes: `float`, `int`, `Color`, `Texmap*`, `const MCHAR*`.
template <typename Type>
std::optional<Type> ParamValue(IParamBlock2& block, ParamID id, TimeValue t) {
    if (!HasParam(block, id)) {
        return std::nullopt;
    }
    Type value{};  // which a failed call may overwrite
    Interval valid = FOREVER;
    if (!block.GetValue(id, t, value, valid, 0)) {
        return std::nullopt;
    }
    return value;
}
