#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "standins/host/memory/local_transform.h"
#include "standins/host/memory/scene_events.h"
#include "standins/host/sdk/max.h"

namespace memhost {

class MemoryHost;
class MemoryLayer;
class TimedObject;
struct HairModifier;

/// A node of the in-memory host. The host makes and owns its nodes (`MemoryHost::add_node`). Nodes
/// only refer to one another, so that a tree of any depth is built, evaluated and destroyed without
/// recursion.
class MemoryNode final : public INode {
public:
    MemoryNode(MemoryHost& host, MemoryNode* parent, const std::wstring& name);
    ~MemoryNode() override { forget_handle(this); }

    // Each of these edits is reported to the listeners of the host's events.

    /// Characters above 0xFFFF become surrogate pairs. A null character ends the name.
    void set_name(const std::wstring& name);
    void set_local_transform(LocalTransform transform);
    /// Transforms from the object's space to the node's.
    void set_object_offset(const Matrix3& node_from_object);
    /// Nodes can share an object. Null removes the node's object.
    void set_object(std::shared_ptr<Object> object);
    void set_hidden(bool hidden);
    /// Moves the node to the end of that layer, which must belong to the host. The root is on no
    /// layer, so nothing happens to it.
    void set_layer(MemoryLayer& layer);
    void set_wire_color(COLORREF color);
    /// Nodes can share hair. Null removes the node's hair.
    void set_hair(std::shared_ptr<const HairModifier> hair);
    /// The host owns the material. Null removes the node's material.
    void set_material(Mtl* material);

    MemoryHost& host() const { return host_; }
    MemoryNode* parent() const { return parent_; }
    const std::vector<MemoryNode*>& children() const { return children_; }
    const std::wstring& name() const { return name_; }
    const LocalTransform& local_transform() const { return local_; }
    /// Null for a node without hair.
    const HairModifier* hair() const { return hair_.get(); }

    /// Moves the children to the parent and removes the node from its layer. The host calls this
    /// for a node that it deletes.
    void leave_tree();

    const MCHAR* GetName() override { return name_.c_str(); }
    Matrix3 GetNodeTM(TimeValue t, Interval* valid = nullptr) override;
    Matrix3 GetObjTMAfterWSM(TimeValue t, Interval* valid = nullptr) override;
    INode* GetParentNode() override { return parent_; }
    int NumberOfChildren() override { return static_cast<int>(children_.size()); }
    INode* GetChildNode(int i) override;
    const ObjectState& EvalWorldState(TimeValue t, BOOL eval_hidden = TRUE) override;
    /// True if the node itself, its layer or its category is hidden. Hidden ancestors don't matter.
    int IsNodeHidden(BOOL for_renderer = FALSE) override;
    DWORD GetWireColor() override { return wire_color_; }
    Mtl* GetMtl() override { return material_; }

private:
    // The world matrix of the last evaluation. It holds for the times in `valid`, as long as the
    // host's transforms still have this version.
    struct WorldMatrix {
        Matrix3 matrix;
        Interval valid;
        std::uint64_t version = 0;
    };

    void note(NodeEvent event);
    bool knows_world_at(TimeValue t) const;
    void compute_world_at(TimeValue t);
    const WorldMatrix& world_at(TimeValue t);

    MemoryHost& host_;
    MemoryNode* parent_;  // null for the root
    std::vector<MemoryNode*> children_;
    std::wstring name_;
    LocalTransform local_;
    Matrix3 object_offset_;
    WorldMatrix world_;
    std::shared_ptr<Object> object_;
    TimedObject* timed_object_ = nullptr;  // `object_`, if it is one
    std::shared_ptr<const HairModifier> hair_;
    ObjectState state_;
    COLORREF wire_color_ = 0x00808080;
    MemoryLayer* layer_ = nullptr;  // owned by the host; null for the root
    Mtl* material_ = nullptr;       // owned by the host
    bool hidden_ = false;
};

}  // namespace memhost
