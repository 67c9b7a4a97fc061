#pragma once

#include "standins/host/sdk/animatable.h"
#include "standins/host/sdk/tab.h"

class INode;

namespace NodeEventNamespace {

using NodeKey = AnimHandle;
using NodeKeyTab = Tab<NodeKey>;

/// The node with that key. Null if it is gone, or if the key isn't that of a node.
INode* GetNodeByKey(NodeKey key);

}  // namespace NodeEventNamespace

/// The base class of scene event listeners.
class ISceneEventCallback {
public:
    virtual ~ISceneEventCallback() = default;
};

/// Listens to events of nodes. Events arrive in batches, between `CallbackBegin` and `CallbackEnd`,
/// some time after the changes themselves.
class INodeEventCallback : public ISceneEventCallback {
public:
    using NodeKeyTab = NodeEventNamespace::NodeKeyTab;

    virtual void CallbackBegin() {}
    virtual void CallbackEnd() {}
    /// Whether `Deleted` also gets the nodes below a deleted one.
    virtual BOOL VerboseDeleted() { return FALSE; }

    virtual void Added(NodeKeyTab&) {}
    virtual void Deleted(NodeKeyTab&) {}
    virtual void LinkChanged(NodeKeyTab&) {}
    virtual void LayerChanged(NodeKeyTab&) {}
    virtual void GroupChanged(NodeKeyTab&) {}
    virtual void HierarchyOtherEvent(NodeKeyTab&) {}
    virtual void ModelStructured(NodeKeyTab&) {}
    virtual void GeometryChanged(NodeKeyTab&) {}
    virtual void TopologyChanged(NodeKeyTab&) {}
    virtual void MappingChanged(NodeKeyTab&) {}
    virtual void ExtentionChannelChanged(NodeKeyTab&) {}
    virtual void ModelOtherEvent(NodeKeyTab&) {}
    virtual void MaterialStructured(NodeKeyTab&) {}
    virtual void MaterialOtherEvent(NodeKeyTab&) {}
    virtual void ControllerStructured(NodeKeyTab&) {}
    virtual void ControllerOtherEvent(NodeKeyTab&) {}
    virtual void NameChanged(NodeKeyTab&) {}
    virtual void WireColorChanged(NodeKeyTab&) {}
    virtual void RenderPropertiesChanged(NodeKeyTab&) {}
    virtual void DisplayPropertiesChanged(NodeKeyTab&) {}
    virtual void UserPropertiesChanged(NodeKeyTab&) {}
    virtual void PropertiesOtherEvent(NodeKeyTab&) {}
    virtual void SubobjectSelectionChanged(NodeKeyTab&) {}
    virtual void SelectionChanged(NodeKeyTab&) {}
    virtual void HideChanged(NodeKeyTab&) {}
    virtual void FreezeChanged(NodeKeyTab&) {}
    virtual void DisplayOtherEvent(NodeKeyTab&) {}
};

class ISceneEventManager {
public:
    using CallbackKey = DWORD;

    virtual ~ISceneEventManager() = default;

    /// Without polling and delay, the events arrive when the host is next idle.
    virtual CallbackKey RegisterCallback(ISceneEventCallback* callback, BOOL polling = FALSE,
                                         DWORD delay_milliseconds = 0, BOOL mouse_up = FALSE) = 0;
    virtual void UnRegisterCallback(CallbackKey key) = 0;
};

ISceneEventManager* GetISceneEventManager();
