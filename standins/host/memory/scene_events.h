#pragma once

#include <utility>
#include <vector>

#include "standins/host/sdk/max.h"

namespace memhost {

/// Which event, as the operation of the callback that it is told to.
using NodeEvent = void (INodeEventCallback::*)(INodeEventCallback::NodeKeyTab&);

/// The host's scene events: edits are noted and told in batches, when the host is next idle.
class SceneEvents final : public ISceneEventManager {
public:
    /// Dropped as long as nobody listens.
    void note(NodeEvent event, INode& node);

    /// Tells the listeners all that was noted, in order. What happens meanwhile waits for the next
    /// time.
    void deliver();

    CallbackKey RegisterCallback(ISceneEventCallback* callback, BOOL polling,
                                 DWORD delay_milliseconds, BOOL mouse_up) override;
    void UnRegisterCallback(CallbackKey key) override;

private:
    struct Batch {
        NodeEvent event;
        INodeEventCallback::NodeKeyTab nodes;
    };

    std::vector<std::pair<CallbackKey, INodeEventCallback*>> listeners_;
    std::vector<Batch> noted_;
    CallbackKey last_key_ = 0;
};

/// Takes back the handle of something that is going; its key leads nowhere from now on.
void forget_handle(Animatable* going);

}  // namespace memhost
