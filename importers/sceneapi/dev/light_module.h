#pragma once

#include <string>

#include "importers/sceneapi/dev/light_node.h"

namespace qor {

/// A set of named options for an importer inside the renderer: one `load` block.
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
