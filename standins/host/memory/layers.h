#pragma once

#include <memory>
#include <string>
#include <vector>

#include "standins/host/sdk/max.h"

namespace memhost {

class MemoryNode;

/// A layer of the scene. Its nodes stand in the order in which they came to it.
class MemoryLayer final : public ILayerProperties {
public:
    explicit MemoryLayer(const std::wstring& name);

    const std::vector<MemoryNode*>& nodes() const { return nodes_; }

    /// A hidden layer hides its nodes.
    void set_hidden(bool hidden = true);
    bool hidden() const { return hidden_; }

    // Called by nodes; `MemoryNode::set_layer` is how a node changes its layer.
    void add(MemoryNode& node) { nodes_.push_back(&node); }
    void remove(MemoryNode& node);

    const MCHAR* getName() override { return name_.c_str(); }
    BOOL Nodes(Tab<INode*>& nodes) override;

private:
    std::wstring name_;
    std::vector<MemoryNode*> nodes_;
    bool hidden_ = false;
};

/// The layers of a host's scene. The first is the default layer, "0"; every node but the root is
/// there until it is put on another.
class MemoryLayers final : public IFPLayerManager {
public:
    MemoryLayers() { layer(L"0"); }

    MemoryLayer& default_layer() { return *layers_.front(); }

    /// The layer of that name: a new one behind the others, and empty, if there is none yet.
    MemoryLayer& layer(const std::wstring& name);

    int getCount() override { return static_cast<int>(layers_.size()); }
    ILayerProperties* getLayer(int i) override;

private:
    std::vector<std::unique_ptr<MemoryLayer>> layers_;
};

}  // namespace memhost
