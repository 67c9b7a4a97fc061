#include "standins/host/memory/layers.h"

#include <algorithm>

#include "standins/host/memory/host_text.h"
#include "standins/host/memory/memory_host.h"
#include "standins/host/memory/strict_rules.h"

namespace memhost {

MemoryLayer::MemoryLayer(const std::wstring& name) : name_(name) {}

void MemoryLayer::set_hidden(bool hidden) {
    hidden_ = hidden;
    for (MemoryNode* node : nodes_) {
        node->host().events().note(&INodeEventCallback::HideChanged, *node);
    }
}

bool MemoryLayer::hidden() const {
    return hidden_ || (parent_ && host_obeys(StrictRule::kParentLayersHide) && parent_->hidden());
}

// Searches from the end, because most nodes leave a layer that they have only just joined.
void MemoryLayer::remove(MemoryNode& node) {
    const auto found = std::find(nodes_.rbegin(), nodes_.rend(), &node);
    if (found != nodes_.rend()) {
        nodes_.erase(std::next(found).base());
    }
}

BOOL MemoryLayer::Nodes(Tab<INode*>& nodes) {
    nodes.SetCount(0);
    for (INode* node : nodes_) {
        nodes.Append(1, &node);
    }
    return TRUE;
}

MemoryLayer& MemoryLayers::layer(const std::wstring& name) {
    const std::wstring units = units_from_wide(name);
    for (const std::unique_ptr<MemoryLayer>& layer : layers_) {
        if (units == layer->getName()) {
            return *layer;
        }
    }
    layers_.push_back(std::make_unique<MemoryLayer>(units));
    return *layers_.back();
}

ILayerProperties* MemoryLayers::getLayer(int i) {
    return i >= 0 && i < getCount() ? layers_[static_cast<std::size_t>(i)].get() : nullptr;
}

}  // namespace memhost
