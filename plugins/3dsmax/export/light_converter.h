#pragma once

#include <memory>

#include "plugins/3dsmax/export/host.h"
#include "plugins/3dsmax/export/options.h"

namespace qor {
class qorSceneapi_oo;
}

/// Turns the host's lights into what the renderer knows as lights: surfaces that emit.
class LightConverter {
public:
    LightConverter(std::shared_ptr<Qor::Options> options, Interface* host);

    /// Writes the light of `node`, as it is at `time`, where the scene stands. No kind of light has
    /// a counterpart in the scene yet, so nothing is written.
    void Convert(INode* node, qor::qorSceneapi_oo& scene, TimeValue time);

private:
    std::shared_ptr<Qor::Options> options_;
};
