#pragma once

#include <string>
#include <utility>

#include "importers/sceneapi/dev/light_node.h"
#include "importers/sceneapi/dev/scene_types.h"

namespace qor {

/// The surface of a shape. Whoever creates it sets its properties; the shape writes it inside its
/// own object block.
///
/// A material that was never defined is written in full by each `emit`, even if several shapes
/// share it. After `define`, `emit` writes only its name.
class Material : public LightNode {
public:
    explicit Material(std::string name) : name_(std::move(name)) {}

    void emit(qorSceneapi_oo& scene) final;
    void define(qorSceneapi_oo& scene) final;
    bool is_defined() const final { return defined_; }

    const std::string& get_name() const { return name_; }
    void set_name(std::string name) { name_ = std::move(name); }

protected:
    /// Writes the shaders into the open material block and assigns the outermost one.
    virtual void emit_surface(qorSceneapi_oo& scene) = 0;

    /// The colour with each component clamped to 0..1. NaN stays NaN.
    static qorColor clamped(float r, float g, float b);

private:
    void write_block(qorSceneapi_oo& scene, bool place);

    bool defined_ = false;
    std::string name_;
};

}  // namespace qor
