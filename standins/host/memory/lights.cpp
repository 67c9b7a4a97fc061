#include "standins/host/memory/lights.h"

#include <algorithm>

#include "standins/host/memory/host_text.h"
#include "standins/host/memory/placement.h"
#include "standins/host/memory/strict_rules.h"

namespace memhost {
namespace {

constexpr int kRingSides = 8;

// The shape that a light has when the user creates it. A point light has no shape, and a sphere
// only a radius.
std::vector<Point3> default_shape(LightscapeLight::LightTypes type) {
    switch (type) {
        case LightscapeLight::TARGET_LINEAR_TYPE:
        case LightscapeLight::LINEAR_TYPE:
            return {Point3(0, -1, 0), Point3(0, 1, 0)};
        case LightscapeLight::TARGET_AREA_TYPE:
        case LightscapeLight::AREA_TYPE:
            return rectangle_shape(1, 1);
        case LightscapeLight::TARGET_DISC_TYPE:
        case LightscapeLight::DISC_TYPE:
            return disc_shape(1, kRingSides);
        case LightscapeLight::TARGET_CYLINDER_TYPE:
        case LightscapeLight::CYLINDER_TYPE:
            return cylinder_shape(1, 1, kRingSides);
        default:
            return {};
    }
}

void add_ring(std::vector<Point3>& points, float radius, float z, int sides) {
    for (int i = 0; i < sides; ++i) {
        const Point3 direction = rotation_z(360.0 * i / sides).GetRow(0);
        points.push_back(direction * radius + Point3(0, 0, z));
    }
}

}  // namespace

StandardLight& StandardLight::intensity(TimedNumber multiplier) {
    intensity_ = std::move(multiplier);
    return *this;
}

StandardLight& StandardLight::color(TimedValue<Point3> rgb) {
    color_ = std::move(rgb);
    return *this;
}

SkyLight& SkyLight::map(Texmap* map) {
    blocks_.push_back(std::make_unique<MemoryParamBlock>());
    blocks_.back()->map(2, L"skyMap", map);
    return reference(*blocks_.back());
}

SkyLight& SkyLight::reference(ReferenceTarget& target) {
    references_.push_back(&target);
    return *this;
}

// A strict host puts a null reference before each of them.
int SkyLight::NumRefs() {
    const int count = static_cast<int>(references_.size());
    return host_obeys(StrictRule::kNullReferences) ? 2 * count : count;
}

RefTargetHandle SkyLight::GetReference(int i) {
    if (!host_obeys(StrictRule::kNullReferences)) {
        return references_[checked_index(i, references_.size(), "reference")];
    }
    const std::size_t place = checked_index(i, 2 * references_.size(), "reference");
    return place % 2 == 0 ? nullptr : references_[place / 2];
}

PhotometricLight::PhotometricLight(LightTypes type) : type_(type), shape_(default_shape(type)) {}

PhotometricLight& PhotometricLight::distribution(DistTypes distribution) {
    distribution_ = distribution;
    return *this;
}

PhotometricLight& PhotometricLight::shape(std::vector<Point3> points) {
    shape_ = std::move(points);
    return *this;
}

PhotometricLight& PhotometricLight::radius(TimedNumber radius) {
    radius_ = std::move(radius);
    return *this;
}

PhotometricLight& PhotometricLight::filter(const Point3& rgb) {
    filter_ = rgb;
    return *this;
}

PhotometricLight& PhotometricLight::kelvin(TimedNumber kelvin) {
    kelvin_ = std::move(kelvin);
    return *this;
}

PhotometricLight& PhotometricLight::lumens(TimedNumber lumens) {
    lumens_ = std::move(lumens);
    return *this;
}

PhotometricLight& PhotometricLight::web_file(const std::wstring& path, const Point3& rotation) {
    web_ = std::make_unique<MemoryParamBlock>();
    web_->text(0, L"webFile", path)
        .number(1, L"webRotateX", rotation.x)
        .number(2, L"webRotateY", rotation.y)
        .number(3, L"webRotateZ", rotation.z);
    return distribution(WEB_DIST);
}

PhotometricLight& PhotometricLight::web_file(const std::string& path_utf8, const Point3& rotation) {
    return web_file(units_from_utf8(path_utf8), rotation);
}

IParamBlock2* PhotometricLight::GetParamBlockByID(BlockID id) {
    return id == PB_WEB ? web_.get() : nullptr;
}

int PhotometricLight::GetShape(Point3* points, int size) const {
    const int count = static_cast<int>(shape_.size());
    if (points != nullptr) {
        const int filled = host_obeys(StrictRule::kShapeFillsFewer) ? count / 2 : count;
        std::copy_n(shape_.begin(), std::min(filled, size), points);
    }
    return count;
}

std::vector<Point3> rectangle_shape(float width, float length) {
    const float x = width / 2;
    const float y = length / 2;
    return {Point3(-x, -y, 0), Point3(x, -y, 0), Point3(x, y, 0), Point3(-x, y, 0)};
}

std::vector<Point3> disc_shape(float radius, int sides) {
    std::vector<Point3> points;
    add_ring(points, radius, 0, sides);
    return points;
}

std::vector<Point3> cylinder_shape(float radius, float height, int sides) {
    std::vector<Point3> points;
    add_ring(points, radius, -height / 2, sides);
    add_ring(points, radius, height / 2, sides);
    return points;
}

}  // namespace memhost
