#pragma once

#include "importers/sceneapi/dev/light_factory.h"

namespace qor {

/// Provides a scene API object that belongs to somebody else, and writes nothing of its own.
class PassThroughFactory final : public LightFactory {
public:
    /// `api` is borrowed and must outlive the factory.
    explicit PassThroughFactory(qorScene_api* api) : api_(api) {}

    qorScene_api* get_api() override { return api_; }
    void write_header(qorSceneapi_oo&) override {}
    void close() override {}

private:
    qorScene_api* api_;
};

}  // namespace qor
