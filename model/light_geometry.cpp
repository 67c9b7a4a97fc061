#include "model/light_geometry.h"

#include <utility>

namespace qor {

LightGeometry::LightGeometry(std::string name) : name_(std::move(name)) {}

bool LightGeometry::is_defined() const {
    return defined_;
}

void LightGeometry::set_material(std::shared_ptr<Material> material) {
    material_ = std::move(material);
}

std::shared_ptr<Material> LightGeometry::get_material() const {
    return material_;
}

void LightGeometry::set_name(std::string name) {
    name_ = std::move(name);
}

std::string LightGeometry::get_name() const {
    return name_;
}

void LightGeometry::mark_defined(std::int64_t id) {
    defined_ = true;
    definition_id_ = id;
}

}  // namespace qor
