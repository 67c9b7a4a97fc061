#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "standins/host/memory/checked_index.h"
#include "standins/host/memory/memory_param_block.h"
#include "standins/host/memory/timed_value.h"
#include "standins/host/sdk/max.h"

namespace memhost {

/// A light of one of the host's standard kinds. It converts only to its own class.
class StandardLight : public GenLight {
public:
    StandardLight(Class_ID class_id, int type) : class_id_(class_id), type_(type) {}

    StandardLight& intensity(TimedNumber multiplier);
    /// Components from 0 to 1.
    StandardLight& color(TimedValue<Point3> rgb);

    Class_ID ClassID() override { return class_id_; }
    int CanConvertToType(Class_ID type) override { return type == class_id_; }
    int Type() override { return type_; }
    float GetIntensity(TimeValue t, Interval& valid) override { return intensity_.at(t, valid); }
    Point3 GetRGBColor(TimeValue t, Interval& valid) override { return color_.at(t, valid); }

private:
    Class_ID class_id_;
    int type_;
    TimedNumber intensity_ = 1.0f;
    TimedValue<Point3> color_ = Point3(1, 1, 1);
};

class OmniLight final : public StandardLight {
public:
    OmniLight() : StandardLight(Class_ID(OMNI_LIGHT_CLASS_ID, 0), OMNI_LIGHT) {}
};

/// A spotlight without a target.
class SpotLight final : public StandardLight {
public:
    SpotLight() : StandardLight(Class_ID(0x1014, 0), 3) {}
};

/// Light from one direction, without a target.
class DirectionalLight final : public StandardLight {
public:
    DirectionalLight() : StandardLight(Class_ID(0x1013, 0), 2) {}
};

/// Light from all directions. Its first reference is always null.
class SkyLight final : public LightObject {
public:
    /// Adds a parameter block that holds the map, which may be null.
    SkyLight& map(Texmap* map);
    /// Adds a reference to any other target.
    SkyLight& reference(ReferenceTarget& target);

    Class_ID ClassID() override { return Class_ID(0x7BF61478, 0x522E4705); }
    int CanConvertToType(Class_ID type) override { return type == ClassID(); }
    float GetIntensity(TimeValue, Interval&) override { return 1.0f; }
    Point3 GetRGBColor(TimeValue, Interval&) override { return {1.0f, 1.0f, 1.0f}; }
    int NumRefs() override;
    RefTargetHandle GetReference(int i) override;

private:
    std::vector<std::unique_ptr<MemoryParamBlock>> blocks_;
    std::vector<ReferenceTarget*> references_ = {nullptr};
};

/// A photometric light of any type. It has the default shape of its type until it gets another.
class PhotometricLight final : public LightscapeLight {
public:
    explicit PhotometricLight(LightTypes type);

    PhotometricLight& distribution(DistTypes distribution);
    PhotometricLight& shape(std::vector<Point3> points);
    PhotometricLight& radius(TimedNumber radius);
    PhotometricLight& kelvin(TimedNumber kelvin);
    PhotometricLight& lumens(TimedNumber lumens);
    /// Components from 0 to 1.
    PhotometricLight& filter(const Point3& rgb);
    /// The path is wide text or UTF-8, the angles are in degrees. Also sets the distribution to
    /// `WEB_DIST`.
    PhotometricLight& web_file(const std::wstring& path, const Point3& rotation = {});
    PhotometricLight& web_file(const std::string& path_utf8, const Point3& rotation = {});

    Class_ID ClassID() override { return LIGHTSCAPE_LIGHT_CLASS; }
    IParamBlock2* GetParamBlockByID(BlockID id) override;
    int Type() override { return type_; }
    float GetIntensity(TimeValue t, Interval& valid) override { return lumens_.at(t, valid); }
    Point3 GetRGBColor(TimeValue, Interval&) override { return {1, 1, 1}; }
    DistTypes GetDistribution() const override { return distribution_; }
    int GetShape(Point3* points, int size) const override;
    float GetRadius(TimeValue t, Interval& valid) const override { return radius_.at(t, valid); }
    float GetKelvin(TimeValue t, Interval& valid) const override { return kelvin_.at(t, valid); }
    float GetResultingFlux(TimeValue t, Interval& valid) const override {
        return lumens_.at(t, valid);
    }
    Point3 GetRGBFilter(TimeValue, Interval&) const override { return filter_; }

private:
    LightTypes type_;
    DistTypes distribution_ = ISOTROPIC_DIST;
    std::vector<Point3> shape_;
    TimedNumber radius_ = 1.0f;
    TimedNumber kelvin_ = 6500.0f;
    TimedNumber lumens_ = 1000.0f;
    Point3 filter_{1, 1, 1};
    std::unique_ptr<MemoryParamBlock> web_;  // null without a web file
};

/// Shapes of lights, centred on the origin. The rectangle and the rings are parallel to the xy
/// plane. `sides` is the number of points in a ring.
std::vector<Point3> rectangle_shape(float width, float length);
std::vector<Point3> disc_shape(float radius, int sides);
/// Two rings, the lower one first.
std::vector<Point3> cylinder_shape(float radius, float height, int sides);

}  // namespace memhost
