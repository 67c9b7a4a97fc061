#pragma once

#include <string>

#include "importers/sceneapi/dev/light_node.h"

namespace qor {

/// Named options for an importer in the renderer, written as one `load` block.
class LightModule : public LightNode {
public:
    explicit LightModule(std::string name);

    void emit(qorSceneapi_oo& scene) override;
    void define(qorSceneapi_oo&) override {}
    bool is_defined() const override { return false; }

    virtual void write_parameters(qorSceneapi_oo& scene) = 0;

private:
    std::string name_;
};

}  // namespace qor
