#pragma once

#include <memory>
#include <string>
#include <vector>

#include "standins/host/sdk/max.h"

namespace memhost {

class MemoryNode;

/// A layer of the scene. Its nodes are in the order in which they joined it.
class MemoryLayer final : public ILayerProperties {
public:
    explicit MemoryLayer(const std::wstring& name);

    const std::vector<MemoryNode*>& nodes() const { return nodes_; }

    /// A hidden layer hides its nodes, and in some hosts those on the layers below it.
    void set_hidden(bool hidden = true);
    /// The layer below which this one is. Null for a layer at the top, as all are at first.
    void set_parent(const MemoryLayer* parent) { parent_ = parent; }
    bool hidden() const;

    // Called by nodes. To change a node's layer, call `MemoryNode::set_layer`.
    void add(MemoryNode& node) { nodes_.push_back(&node); }
    void remove(MemoryNode& node);

    const MCHAR* getName() override { return name_.c_str(); }
    BOOL Nodes(Tab<INode*>& nodes) override;

private:
    std::wstring name_;
    std::vector<MemoryNode*> nodes_;
    const MemoryLayer* parent_ = nullptr;
    bool hidden_ = false;
};

/// The layers of a host's scene. The first is the default layer, "0". Every node except the root
/// starts on it.
class MemoryLayers final : public IFPLayerManager {
public:
    MemoryLayers() { layer(L"0"); }

    MemoryLayer& default_layer() { return *layers_.front(); }

    /// The layer with that name. If there is none, adds an empty one after the others.
    MemoryLayer& layer(const std::wstring& name);

    int getCount() override { return static_cast<int>(layers_.size()); }
    ILayerProperties* getLayer(int i) override;

private:
    std::vector<std::unique_ptr<MemoryLayer>> layers_;
};

}  // namespace memhost
