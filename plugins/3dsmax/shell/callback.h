#pragma once

#include <memory>
#include <set>

#include "plugins/3dsmax/export/host.h"
#include "plugins/3dsmax/export/options.h"

/// What the host calls: with the menu's commands, and with each change of a node.
///
/// It collects the nodes that events name, so that an Update can send just those. An exporting
/// command works on a copy; the collection itself starts anew once that command has ended normally.
/// The same object listens from the plug-in's start on.
class Callback : public ActionCallback, public INodeEventCallback {
public:
    /// Borrows `host`.
    Callback(Interface* host, std::shared_ptr<Qor::Options> options);

    /// Carries a command out; see `command_ids.h`. An id that is none of them does nothing. True in
    /// any case, and nothing is thrown: what went wrong is told in a message box.
    BOOL ExecuteAction(int id) override;

    /// A null stands for nodes that were gone when their event came.
    const std::set<INode*>& changed_nodes() const { return changedNodes_; }

    // Each of these makes its nodes changed ones. Those events that aren't here, such as a new name
    // or a selection, change nothing that an Update would send.
    void Added(NodeKeyTab& nodes) override { Record(nodes); }
    void Deleted(NodeKeyTab& nodes) override { Record(nodes); }
    void LinkChanged(NodeKeyTab& nodes) override { Record(nodes); }
    void LayerChanged(NodeKeyTab& nodes) override { Record(nodes); }
    void GroupChanged(NodeKeyTab& nodes) override { Record(nodes); }
    void HierarchyOtherEvent(NodeKeyTab& nodes) override { Record(nodes); }
    void ModelStructured(NodeKeyTab& nodes) override { Record(nodes); }
    void GeometryChanged(NodeKeyTab& nodes) override { Record(nodes); }
    void TopologyChanged(NodeKeyTab& nodes) override { Record(nodes); }
    void MappingChanged(NodeKeyTab& nodes) override { Record(nodes); }
    void ModelOtherEvent(NodeKeyTab& nodes) override { Record(nodes); }
    void MaterialStructured(NodeKeyTab& nodes) override { Record(nodes); }
    void MaterialOtherEvent(NodeKeyTab& nodes) override { Record(nodes); }
    void ControllerStructured(NodeKeyTab& nodes) override { Record(nodes); }
    void ControllerOtherEvent(NodeKeyTab& nodes) override { Record(nodes); }
    void HideChanged(NodeKeyTab& nodes) override { Record(nodes); }

private:
    struct ExportingCommand;

    void Record(NodeKeyTab& nodes);
    void CarryOut(int id);
    void Export(const ExportingCommand& command);

    std::set<INode*> changedNodes_;
    Interface* host_;
    std::shared_ptr<Qor::Options> options_;
};
