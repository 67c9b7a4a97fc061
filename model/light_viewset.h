#pragma once

#include <string>

#include "model/light_camera.h"

namespace qor {

/// A camera with a picture of its own around it, in place of the renderer's stock one.
class LightViewset final : public LightCamera {
public:
    /// `radius` is how far away the picture of `environment_file` stands, in units of the scene.
    LightViewset(std::string name, std::string environment_file, int radius);

    qorShaderHandle emit_environment(qorSceneapi_oo& scene) override;

private:
    std::string environment_file_;
    int radius_;
};

}  // namespace qor
