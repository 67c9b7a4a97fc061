#include "standins/host/memory/scene_events.h"

#include <algorithm>
#include <map>

#include "standins/host/memory/memory_host.h"

namespace memhost {
namespace {

// Handles are never reused.
struct Handles {
    std::map<AnimHandle, Animatable*> by_handle;
    std::map<Animatable*, AnimHandle> by_animatable;
    AnimHandle last = 0;
};

Handles& handles() {
    static Handles all;
    return all;
}

}  // namespace

void forget_handle(Animatable* going) {
    const auto known = handles().by_animatable.find(going);
    if (known != handles().by_animatable.end()) {
        handles().by_handle.erase(known->second);
        handles().by_animatable.erase(known);
    }
}

void SceneEvents::note(NodeEvent event, INode& node) {
    if (listeners_.empty()) {
        return;
    }
    if (noted_.empty() || noted_.back().event != event) {
        noted_.push_back({event, {}});
    }
    AnimHandle key = Animatable::GetHandleByAnim(&node);
    noted_.back().nodes.Append(1, &key);
}

void SceneEvents::deliver() {
    std::vector<Batch> batches;
    batches.swap(noted_);
    if (batches.empty()) {
        return;
    }
    for (const auto& [key, listener] : listeners_) {
        listener->CallbackBegin();
        for (Batch& batch : batches) {
            (listener->*batch.event)(batch.nodes);
        }
        listener->CallbackEnd();
    }
}

SceneEvents::CallbackKey SceneEvents::RegisterCallback(ISceneEventCallback* callback, BOOL, DWORD,
                                                       BOOL) {
    auto* listener = dynamic_cast<INodeEventCallback*>(callback);
    if (listener == nullptr) {
        return 0;
    }
    listeners_.emplace_back(++last_key_, listener);
    return last_key_;
}

void SceneEvents::UnRegisterCallback(CallbackKey key) {
    listeners_.erase(std::remove_if(listeners_.begin(), listeners_.end(),
                                    [key](const auto& listener) { return listener.first == key; }),
                     listeners_.end());
}

}  // namespace memhost

Animatable* Animatable::GetAnimByHandle(AnimHandle handle) {
    const auto known = memhost::handles().by_handle.find(handle);
    return known == memhost::handles().by_handle.end() ? nullptr : known->second;
}

AnimHandle Animatable::GetHandleByAnim(Animatable* animatable) {
    memhost::Handles& all = memhost::handles();
    const auto [known, is_new] = all.by_animatable.emplace(animatable, all.last + 1);
    if (is_new) {
        ++all.last;
        all.by_handle.emplace(all.last, animatable);
    }
    return known->second;
}

ISceneEventManager* GetISceneEventManager() {
    memhost::MemoryHost* host = memhost::MemoryHost::current();
    return host ? &host->events() : nullptr;
}

INode* NodeEventNamespace::GetNodeByKey(NodeKey key) {
    Animatable* found = Animatable::GetAnimByHandle(key);
    return found && found->SuperClassID() == BASENODE_CLASS_ID ? static_cast<INode*>(found)
                                                               : nullptr;
}
