#pragma once

#include <string>

#include "model/light_camera.h"

namespace qor {

/// A camera with its own environment image in place of the renderer's stock one.
class LightViewset final : public LightCamera {
public:
    /// `radius` is the distance of the environment image in scene units.
    LightViewset(std::string name, std::string environment_file, int radius);

    qorShaderHandle emit_environment(qorSceneapi_oo& scene) override;

private:
    std::string environment_file_;
    int radius_;
};

}  // namespace qor
