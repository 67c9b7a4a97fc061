#pragma once

#include <utility>
#include <vector>

#include "standins/host/sdk/max.h"

namespace memhost {

/// An event, identified by the function of the callback that receives it.
using NodeEvent = void (INodeEventCallback::*)(INodeEventCallback::NodeKeyTab&);

/// The host's scene events. Edits are recorded, and sent to listeners in batches when the host is
/// next idle.
class SceneEvents final : public ISceneEventManager {
public:
    /// Records an event. Events are dropped while there are no listeners.
    void note(NodeEvent event, INode& node);

    /// Sends all recorded events to the listeners, in order. Events that happen meanwhile wait for
    /// the next call.
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

/// Invalidates the handle of an object that is being destroyed. The handle identifies nothing from
/// now on.
void forget_handle(Animatable* going);

}  // namespace memhost
