#pragma once

namespace qor {

class qorSceneapi_oo;

/// Anything that can write itself to a scene: shapes, materials, cameras, animations, modules.
class LightNode {
public:
    /// Writes the node at the scene's current position.
    virtual void emit(qorSceneapi_oo& scene) = 0;

    /// Writes the node for later reference instead of placing it in the scene.
    virtual void define(qorSceneapi_oo& scene) = 0;

    virtual bool is_defined() const = 0;

    virtual ~LightNode() = default;
};

}  // namespace qor
