#pragma once

#include <memory>
#include <string>

#include "plugins/3dsmax/export/export_notes.h"
#include "plugins/3dsmax/export/host.h"
#include "plugins/3dsmax/export/options.h"

namespace qor {
class TriangleObject;
class qorSceneapi_oo;
}  // namespace qor

/// Light properties that a scene can't animate are read at this tick, so they are the same in all
/// files of an animation.
inline constexpr TimeValue kFixedTime = 0;

/// Turns the host's lights into the renderer's kind of light: surfaces that emit light.
///
/// A light without extent becomes an object with one degenerate triangle and a light shader. A
/// photometric light with a shape becomes an object of that shape. A sky light becomes the
/// environment picture, not an object. Other kinds of light are left out.
class LightConverter {
public:
    /// Borrows `host`, and `notes` unless that is null.
    LightConverter(std::shared_ptr<Qor::Options> options, Interface* host,
                   ExportNotes* notes = nullptr);

    /// Writes the light of `node` at the current place in the scene. Only colour temperature, an
    /// omni light's intensity and the file of a sky light's picture are read at `time`; flux,
    /// radius, web and colour are read at `kFixedTime`.
    void Convert(INode* node, qor::qorSceneapi_oo& scene, TimeValue time);

    /// The picture file of the last sky light that has one; empty if there is none.
    const std::string& environment() const { return environment_; }

    /// The colour of a light, from its temperature alone. Components can be negative.
    static Point3 KelvinToColor(LightscapeLight& light, TimeValue time);

private:
    // What a conversion needs besides the light.
    struct Job {
        qor::qorSceneapi_oo& scene;
        TimeValue time;
        std::string name;  // of the object
        // The object's name and the light's number, so that lights with the same name have separate
        // materials.
        std::string material_name;
        NodeNotes notes;
    };

    void ConvertPhotometricLight(LightscapeLight& light, const Job& job);
    void ConvertStandardLight(Object& object, const Job& job);

    void ConvertOmniLight(GenLight& light, const Job& job);
    void ConvertPointLight(LightscapeLight& light, const Job& job);
    void ConvertPolygonLight(LightscapeLight& light, const Job& job);
    void ConvertRingLight(LightscapeLight& light, const Job& job);
    void ConvertSphereLight(LightscapeLight& light, const Job& job);
    void ConvertSkyLight(Object& light, const Job& job);

    // Gives the shape its luminous material and writes it.
    void EmitShape(qor::TriangleObject& shape, LightscapeLight& light, float power_lumen,
                   const Job& job);

    std::string environment_;
    std::shared_ptr<Qor::Options> options_;
    Interface* host_;
    ExportNotes* notes_;
    int light_count_ = 0;  // includes lights that are left out
};
