#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "standins/host/memory/cameras.h"
#include "standins/host/memory/deforming_objects.h"
#include "standins/host/memory/hair.h"
#include "standins/host/memory/lights.h"
#include "standins/host/memory/local_transform.h"
#include "standins/host/memory/maps.h"
#include "standins/host/memory/materials.h"
#include "standins/host/memory/memory_host.h"
#include "standins/host/memory/memory_node.h"
#include "standins/host/memory/memory_objects.h"
#include "standins/host/memory/mesh_builder.h"
#include "standins/host/memory/mesh_objects.h"
#include "standins/host/memory/placement.h"

namespace memhost {

/// Builds a node. A builder only refers to the node: it can be copied, and is valid as long as the
/// scene. Functions return the builder, so that calls can be chained.
///
/// Names and paths are wide text or UTF-8.
class NodeBuilder {
public:
    explicit NodeBuilder(MemoryNode& node) : node_(&node) {}

    /// Adds a child and returns the child's builder.
    NodeBuilder child(const std::wstring& name) const;
    NodeBuilder child(const std::string& name_utf8) const;

    /// The node's matrix in its parent's space. Each of these replaces the one before.
    NodeBuilder at(float x, float y, float z) const;
    NodeBuilder transform(const Matrix3& parent_from_node) const;
    NodeBuilder keys(std::vector<TransformKey> keys) const;
    NodeBuilder motion(LocalTransform::Function parent_from_node) const;

    NodeBuilder offset(const Matrix3& node_from_object) const;
    NodeBuilder object(std::shared_ptr<Object> object) const;
    /// Makes the node's object from `arguments` and returns the object.
    template <typename T, typename... Arguments>
    T& make_object(Arguments&&... arguments) const {
        const auto made = std::make_shared<T>(std::forward<Arguments>(arguments)...);
        object(made);
        return *made;
    }
    /// Gives the node a `MeshObject` with a copy of `mesh`.
    NodeBuilder mesh(const Mesh& mesh) const;
    /// Gives the node a `DeformingObject`.
    NodeBuilder deforming(DeformingMesh mesh) const;
    /// Gives the node a new camera and returns the camera.
    MemoryCamera& camera() const;
    NodeBuilder without_object() const;
    /// The hair grows on the node's mesh.
    NodeBuilder hair(const HairModifier& hair) const;
    NodeBuilder hidden(bool hidden = true) const;
    /// Moves the node to the end of that layer. Adds the layer if there is none.
    NodeBuilder layer(const std::wstring& name) const;
    NodeBuilder layer(const std::string& name_utf8) const;
    /// Components from 0 to 255.
    NodeBuilder wire(int red, int green, int blue) const;
    NodeBuilder material(Mtl& material) const;

    MemoryNode& node() const { return *node_; }

private:
    MemoryNode* node_;
};

/// Describes a scene in a host of its own, which is the core interface while the builder lives.
///
///     SceneBuilder scene;
///     NodeBuilder box = scene.node(L"Box01").at(1, 2, 3);
///     box.child(L"Lid").transform(rotation_x(30)).hidden();
///     scene.unit(UNITS_MILES).animation_frames(0, 50);
///
/// A node has a `HelperObject` until it gets another object or `without_object` is called.
class SceneBuilder {
public:
    SceneBuilder() = default;
    /// A host that obeys the rules of the list, see `StrictRules::parse`.
    explicit SceneBuilder(const std::string& strict_rules) {
        host_.strict().add(StrictRules::parse(strict_rules));
    }

    MemoryHost& host() { return host_; }

    /// Makes a map or a material for nodes and materials to use:
    ///
    ///     auto& stone = scene.make<StandardMaterial>(L"Stone").map(
    ///         kDiffuseSlot, &scene.bitmap(L"stone.png").tiling(2, 2));
    ///     scene.node(L"Wall").mesh(box_mesh(4, 1, 3)).material(stone);
    template <typename T, typename... Arguments>
    T& make(Arguments&&... arguments) {
        return host_.make<T>(std::forward<Arguments>(arguments)...);
    }
    template <typename Text>
    BitmapMap& bitmap(const Text& path) {
        return make<BitmapMap>(host_, path);
    }

    /// Adds a node at the top of the tree.
    NodeBuilder node(const std::wstring& name);
    NodeBuilder node(const std::string& name_utf8);

    /// Returns a layer, for a test to hide it or leave it empty. Layers are in the order in which
    /// they are first named.
    MemoryLayer& layer(const std::wstring& name) { return host_.layers().layer(name); }

    SceneBuilder& time(TimeValue ticks);
    /// Call this before `animation_frames`, which counts in frames of this length.
    SceneBuilder& frames_per_second(int frames);
    /// The animation range, both frames included.
    SceneBuilder& animation_frames(int first, int last);
    SceneBuilder& animation_ticks(TimeValue first, TimeValue last);
    SceneBuilder& unit(int type, float scale = 1.0f);
    SceneBuilder& asset_folder(MaxSDK::AssetManagement::AssetType type, const std::wstring& path);
    SceneBuilder& asset_folder(MaxSDK::AssetManagement::AssetType type,
                               const std::string& path_utf8);
    SceneBuilder& config_folder(const std::wstring& path);
    SceneBuilder& config_folder(const std::string& path_utf8);

private:
    MemoryHost host_;
};

}  // namespace memhost
