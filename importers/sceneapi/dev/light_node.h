#pragma once

namespace qor {

class qorSceneapi_oo;

/// Anything that can write itself to a scene: shapes, materials, cameras, animations, modules.
class LightNode {
public:
    /// Writes it where the scene stands.
    virtual void emit(qorSceneapi_oo& scene) = 0;

    /// Writes it for later reference instead of putting it in the scene.
    virtual void define(qorSceneapi_oo& scene) = 0;

    virtual bool is_defined() const = 0;

    virtual ~LightNode() = default;
};

}  // namespace qor
