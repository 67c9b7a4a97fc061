#pragma once

#include "plugins/3dsmax/export/host.h"

/// The object that decides which conversion a node goes to; null if it has none. That is asked at
/// tick 0, whatever the time of the pass: a conversion evaluates the node at its own time.
inline Object* KindObject(INode* node) {
    const ObjectState state = node->EvalWorldState(0, TRUE);
    return state.obj;
}
