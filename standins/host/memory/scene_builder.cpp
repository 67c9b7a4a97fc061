#include "standins/host/memory/scene_builder.h"

#include <utility>

#include "standins/host/memory/host_text.h"

namespace memhost {

NodeBuilder NodeBuilder::child(const std::wstring& name) const {
    MemoryNode& added = node_->host().add_node(*node_, name);
    added.set_object(std::make_unique<HelperObject>());
    return NodeBuilder(added);
}

NodeBuilder NodeBuilder::child(const std::string& name_utf8) const {
    return child(units_from_utf8(name_utf8));
}

NodeBuilder NodeBuilder::at(float x, float y, float z) const {
    return transform(translation(x, y, z));
}

NodeBuilder NodeBuilder::transform(const Matrix3& parent_from_node) const {
    node_->set_local_transform(LocalTransform(parent_from_node));
    return *this;
}

NodeBuilder NodeBuilder::keys(std::vector<TransformKey> keys) const {
    node_->set_local_transform(LocalTransform(std::move(keys)));
    return *this;
}

NodeBuilder NodeBuilder::motion(LocalTransform::Function parent_from_node) const {
    node_->set_local_transform(LocalTransform(std::move(parent_from_node)));
    return *this;
}

NodeBuilder NodeBuilder::offset(const Matrix3& node_from_object) const {
    node_->set_object_offset(node_from_object);
    return *this;
}

NodeBuilder NodeBuilder::object(std::shared_ptr<Object> object) const {
    node_->set_object(std::move(object));
    return *this;
}

NodeBuilder NodeBuilder::mesh(const Mesh& mesh) const {
    return object(std::make_shared<MeshObject>(mesh));
}

NodeBuilder NodeBuilder::deforming(DeformingMesh mesh) const {
    return object(std::make_shared<DeformingObject>(std::move(mesh)));
}

MemoryCamera& NodeBuilder::camera() const {
    const auto camera = std::make_shared<MemoryCamera>();
    node_->set_object(camera);
    return *camera;
}

NodeBuilder NodeBuilder::without_object() const {
    return object(nullptr);
}

NodeBuilder NodeBuilder::hair(const HairModifier& hair) const {
    node_->set_hair(std::make_shared<HairModifier>(hair));
    return *this;
}

NodeBuilder NodeBuilder::hidden(bool hidden) const {
    node_->set_hidden(hidden);
    return *this;
}

NodeBuilder NodeBuilder::layer(const std::wstring& name) const {
    node_->set_layer(node_->host().layers().layer(name));
    return *this;
}

NodeBuilder NodeBuilder::layer(const std::string& name_utf8) const {
    return layer(units_from_utf8(name_utf8));
}

NodeBuilder NodeBuilder::wire(int red, int green, int blue) const {
    node_->set_wire_color(static_cast<COLORREF>(red | (green << 8) | (blue << 16)));
    return *this;
}

NodeBuilder NodeBuilder::material(Mtl& material) const {
    node_->set_material(&material);
    return *this;
}

NodeBuilder SceneBuilder::node(const std::wstring& name) {
    return NodeBuilder(host_.root()).child(name);
}

NodeBuilder SceneBuilder::node(const std::string& name_utf8) {
    return node(units_from_utf8(name_utf8));
}

SceneBuilder& SceneBuilder::time(TimeValue ticks) {
    host_.SetTime(ticks);
    return *this;
}

SceneBuilder& SceneBuilder::frames_per_second(int frames) {
    host_.set_ticks_per_frame(TIME_TICKSPERSEC / frames);
    return *this;
}

SceneBuilder& SceneBuilder::animation_frames(int first, int last) {
    return animation_ticks(first * host_.ticks_per_frame(), last * host_.ticks_per_frame());
}

SceneBuilder& SceneBuilder::animation_ticks(TimeValue first, TimeValue last) {
    host_.set_animation_range(Interval(first, last));
    return *this;
}

SceneBuilder& SceneBuilder::unit(int type, float scale) {
    host_.set_unit(type, scale);
    return *this;
}

SceneBuilder& SceneBuilder::asset_folder(MaxSDK::AssetManagement::AssetType type,
                                         const std::wstring& path) {
    host_.add_asset_folder(type, path);
    return *this;
}

SceneBuilder& SceneBuilder::asset_folder(MaxSDK::AssetManagement::AssetType type,
                                         const std::string& path_utf8) {
    return asset_folder(type, units_from_utf8(path_utf8));
}

SceneBuilder& SceneBuilder::config_folder(const std::wstring& path) {
    host_.set_config_folder(path);
    return *this;
}

SceneBuilder& SceneBuilder::config_folder(const std::string& path_utf8) {
    return config_folder(units_from_utf8(path_utf8));
}

}  // namespace memhost
