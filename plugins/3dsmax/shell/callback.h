#pragma once

#include <memory>
#include <set>
#include <string>

#include "plugins/3dsmax/export/export_notes.h"
#include "plugins/3dsmax/export/host.h"
#include "plugins/3dsmax/export/options.h"

/// Receives the menu's commands and every change of a node from the host.
///
/// It collects the nodes that events name, so that an Update can send just those. An exporting
/// command works on a copy of the collection, which is cleared when the command ends without an
/// exception. At the end of each of them a report is delivered (report_delivery.h). One object
/// receives all events after the plug-in's start.
class Callback : public ActionCallback, public INodeEventCallback {
public:
    /// Borrows `host`.
    Callback(Interface* host, std::shared_ptr<Qor::Options> options);

    /// Carries out a command of `command_ids.h`, and ignores any other id. Always returns true and
    /// throws nothing: failures are shown in a message box.
    BOOL ExecuteAction(int id) override;

    /// Contains null if a node was already gone when its event came.
    const std::set<INode*>& changed_nodes() const { return changedNodes_; }

    // Each of these events marks its nodes as changed. Events that aren't listed, such as a new
    // name or a selection, change nothing that an Update would send.
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
    void RunExporter(const ExportingCommand& command, const std::string& path, ExportNotes& notes);

    std::set<INode*> changedNodes_;
    Interface* host_;
    std::shared_ptr<Qor::Options> options_;
};
