#include "plugins/3dsmax/shell/callback.h"

#include "plugins/3dsmax/shell/host_border.h"

// A key whose node no longer exists is recorded as null, which no Update ever asks for.
void Callback::Record(NodeKeyTab& nodes) {
    WithoutExceptions([&] {
        for (int i = 0; i < nodes.Count(); ++i) {
            Animatable* animatable = Animatable::GetAnimByHandle(nodes[i]);
            const bool is_node =
                animatable != nullptr && animatable->SuperClassID() == BASENODE_CLASS_ID;
            changedNodes_.insert(is_node ? static_cast<INode*>(animatable) : nullptr);
        }
    });
}
