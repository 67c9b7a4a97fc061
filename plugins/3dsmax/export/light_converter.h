#pragma once

#include <memory>
#include <string>

#include "plugins/3dsmax/export/host.h"
#include "plugins/3dsmax/export/options.h"

namespace qor {
class TriangleObject;
class qorSceneapi_oo;
}  // namespace qor

/// Light properties that a scene can't animate are read at this tick, so they are the same in all
/// files of an animation.
inline constexpr TimeValue kFixedTime = 0;

/// Turns the host's lights into what the renderer knows as lights: surfaces that emit.
///
/// A light without extent becomes an object of one degenerate triangle with a light shader on it,
/// a photometric light with a shape an object of that shape, and a sky light no object at all but
/// the picture of the environment. Lights of other kinds leave nothing.
class LightConverter {
public:
    /// Borrows `host`.
    LightConverter(std::shared_ptr<Qor::Options> options, Interface* host);

    /// Writes the light of `node` where the scene stands. Only its temperature, an omni light's
    /// intensity and the file of a sky's picture follow `time`; flux, radius, web and colour are
    /// those of `kFixedTime`.
    void Convert(INode* node, qor::qorSceneapi_oo& scene, TimeValue time);

    /// The file of the last sky light converted; empty if none of them shows one.
    const std::string& environment() const { return environment_; }

    /// The colour of a light by its temperature alone; components can be negative.
    static Point3 KelvinToColor(LightscapeLight& light, TimeValue time);

private:
    // What a conversion needs beside the light.
    struct Job {
        qor::qorSceneapi_oo& scene;
        TimeValue time;
        std::string name;  // of the object
        // The light's number follows the name, so that lights of one name have a material each.
        std::string material_name;
    };

    void ConvertPhotometricLight(LightscapeLight& light, const Job& job);
    void ConvertStandardLight(Object& object, const Job& job);

    void ConvertOmniLight(GenLight& light, const Job& job);
    void ConvertPointLight(LightscapeLight& light, const Job& job);
    void ConvertPolygonLight(LightscapeLight& light, const Job& job);
    void ConvertRingLight(LightscapeLight& light, const Job& job);
    void ConvertSphereLight(LightscapeLight& light, const Job& job);
    void ConvertSkyLight(Object& light, TimeValue time);

    // Gives the shape its luminous material and writes it.
    void EmitShape(qor::TriangleObject& shape, LightscapeLight& light, float power_lumen,
                   const Job& job);

    std::string environment_;
    std::shared_ptr<Qor::Options> options_;
    Interface* host_;
    int light_count_ = 0;  // also of those that leave nothing
};
