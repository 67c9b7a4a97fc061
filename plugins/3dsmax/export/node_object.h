#pragma once

#include "plugins/3dsmax/export/host.h"

/// The object that decides which conversion a node gets; null if the node has none. It is evaluated
/// at tick 0, whatever the time of the pass; the conversion evaluates the node again at its own
/// time.
inline Object* KindObject(INode* node) {
    const ObjectState state = node->EvalWorldState(0, TRUE);
    return state.obj;
}
